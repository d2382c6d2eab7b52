// A configuration template for one device.
#pragma once

#include <vector>

#include "evaluation/ADMEvaluationContextBase.h"
#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Export.h"
#include "runtime/MutableDictionary.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "template/ADMGlobalConstantsProcessor.h"
#include "template/ADMStatusValueRepresentation.h"
#include "template/ADMTemplateProcessorHolder.h"
#include "template/TemplateError.h"
#include "template/status/ADMStatusServiceCreator.h"

namespace commandfilter {

class KeyedRepresentation;

/// Computes the values of a template when they are asked for, keeps them, and reports errors by
/// key. Values may name each other; one that names itself, directly or through others, uses up the
/// stack and raises.
class COMMANDFILTER_EXPORT ADMTemplateProcessor final : public Object {
 public:
  static const Class kClass;

  /// nil when the creator or the template is nil. The template is not looked at before a value is
  /// asked for; a section of it that is no dictionary counts as missing. The input parameters may
  /// be nil.
  [[nodiscard]] static RefPtr<ADMTemplateProcessor>
  initWithServiceCreator_configurationTemplate_inputParameters(
      ADMStatusServiceCreator* serviceCreator, const Dictionary* configurationTemplate,
      const Dictionary* inputParameters);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  /// The value, computed once in a session; nil when there is none, and for every key while the
  /// device offers no services. May wait for the device.
  /// @throws Exception whatever the computation raises, "nested too deeply" for values in a circle
  /// included; nothing is kept then.
  Value valueForKey(const String* key);
  /// What computes the value; nil for an unknown key and for a description that cannot be used.
  /// @throws Exception as ADMStatusValueRepresentation's initialiser does.
  RefPtr<ADMStatusValueRepresentation> valueRepresentationForKey(const String* key);
  /// What the contexts of all values share, made on the first call.
  [[nodiscard]] Ref<Dictionary> globalConfiguration();

  /// The descriptions of the values by key; nil when the template has none.
  [[nodiscard]] const RefPtr<Dictionary>& valuesTemplate() const noexcept {
    return valuesTemplate_;
  }

  /// A dictionary from value key to a dictionary with "category" (integer) and "description"
  /// (string), in the order of the template; nil when there are no errors. A value that failed once
  /// stays in it.
  [[nodiscard]] RefPtr<Dictionary> errorInfo() const;
  /// The same errors with all that is known about them.
  [[nodiscard]] std::vector<TemplateError> errors() const;
  /// The errors of the constants, which are in no report of the values.
  [[nodiscard]] std::vector<TemplateError> constantErrors() const;

  /// All values that are not nil, by key, in the order of the template; nil when there are none.
  /// @throws Exception whatever a computation raises.
  RefPtr<Dictionary> entireInfo();
  /// Forgets the values; with YES also the services and what they have answered. Constants and
  /// compiled expressions stay.
  void startNewSession(bool reinitializeServices);
  /// True when the device can be asked.
  [[nodiscard]] bool servicesAvailable() { return serviceCreator_->servicesAvailable(); }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ADMTemplateProcessor(Ref<ADMStatusServiceCreator> serviceCreator, Ref<Dictionary> configuration,
                       RefPtr<Dictionary> inputParameters);
  ~ADMTemplateProcessor() override;

  [[nodiscard]] Ref<Dictionary> makeGlobalConfiguration();
  /// The representation of a key with its value, borrowed; nullptr when the template describes
  /// none.
  [[nodiscard]] KeyedRepresentation* keyedRepresentation(const Value& key);
  /// The same if it has been made; otherwise nullptr.
  [[nodiscard]] KeyedRepresentation* knownRepresentation(const Value& key) const;
  /// Makes it; nullptr when the description is no dictionary.
  [[nodiscard]] KeyedRepresentation* newRepresentation(const Value& key, const Value& description);
  /// The value that was kept in the session, or else computed.
  [[nodiscard]] Value valueOf(KeyedRepresentation& keyed);
  [[nodiscard]] RefPtr<ADMStatusValueRepresentation> makeRepresentation(const Dictionary& info);

  Ref<Dictionary> template_;
  /// The template's values; nil when it has none.
  RefPtr<Dictionary> valuesTemplate_;
  Ref<ADMStatusServiceCreator> serviceCreator_;
  /// What computes each value, with the value that it gave in the session: the values' cache needs
  /// no look-up of its own.
  Ref<MutableDictionary> valueRepresentations_;
  /// The same in the order of the template, borrowed; nullptr for those that nobody has asked for.
  std::vector<KeyedRepresentation*> inOrder_;
  /// nil until it is asked for.
  RefPtr<Dictionary> globalConfiguration_;
  RefPtr<Dictionary> inputParameters_;

  RefPtr<ADMGlobalConstantsProcessor> constants_;
  RefPtr<ADMTemplateProcessorHolder> holder_;
  /// The context whose configuration the others share; nil before there is one.
  RefPtr<ADMEvaluationContextBase> sharedContext_;
};

}  // namespace commandfilter
