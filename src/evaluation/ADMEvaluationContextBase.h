// The one implementation of evaluation contexts.
#pragma once

#include <span>
#include <string_view>

#include "evaluation/SharedConfiguration.h"
#include "evaluation/protocol/ADMEvaluationContext.h"
#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Export.h"
#include "runtime/MutableDictionary.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"
#include "template/status/ADMMessageSource.h"

namespace commandfilter {

class ADMFeaturePathSource;

/// Resolves names, feature paths and procedures. The procedures are methods named "execute" + name
/// + "Procedure:" that take the argument items as an array, nil for none; a class below adds
/// procedures by adding such methods, and names by overriding the hooks.
class COMMANDFILTER_EXPORT ADMEvaluationContextBase
    : public Implements<Object, ADMEvaluationContext> {
 public:
  static const Class kClass;

  /// Either may be nil.
  [[nodiscard]] static Ref<ADMEvaluationContextBase> initWithStatusService_globalConfiguration(
      Value statusService, RefPtr<Dictionary> globalConfiguration);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  [[nodiscard]] const Dictionary* globalConfiguration() const final {
    return shared_ ? &shared_->configuration() : globalConfiguration_.get();
  }
  [[nodiscard]] Value statusService() const final { return statusService_; }
  void resetEvaluations() override;
  Value processSelector(const EvaluationName& name) override;
  Value executeProcedure_withArguments(const EvaluationName& name, const Array* arguments) override;
  Value valueForFeaturePathComponents(const Array* components) override;
  [[nodiscard]] ADMEvaluationError* lastError() const final { return lastError_.get(); }
  [[nodiscard]] ADMEvaluationError* recordedError() const override { return lastError_.get(); }
  void setLastError(RefPtr<ADMEvaluationError> error) override;
  void setRuntimeErrorWithArguments(std::string_view format,
                                    std::span<const FormatArgument> arguments) final;
  void clearErrors() override {
    if (lastError_) lastError_ = nullptr;
  }
  [[nodiscard]] ADMNamedValues* constants() final;
  [[nodiscard]] Object* permanenceOfConstants() final;
  [[nodiscard]] ADMNamedValues* templateValues() final;

  /// Shares what another context has found in the configuration, so that no macro is compiled
  /// twice. Nothing happens unless both have the same configuration.
  void shareConfigurationOf(ADMEvaluationContextBase& other);

  /// The macro that a call of that name reaches, compiled; nil when there is none. The contexts
  /// that are made for this one's evaluations have the same.
  /// @throws Exception when what stands under the name is no text.
  [[nodiscard]] RefPtr<ADMEvaluationProcessor> compiledMacro(const EvaluationName& name);

  /// A scratch store for procedures, which `resetEvaluations` empties.
  [[nodiscard]] MutableDictionary& commonCache();

  // The hooks.

  /// The built-in value of a name: nil when the name is none of the context's, the null object
  /// when it is and has no value.
  virtual Value serviceSymbolForNameImpl(const EvaluationName& name);
  /// The answer of the status service to a message; nil when it has none.
  virtual Value processSelectorImpl(const Selector& selector);
  /// What an empty or "@" component of a feature path stands for.
  virtual Value defaultServiceSymbolValue();

 protected:
  ADMEvaluationContextBase(Value statusService, RefPtr<Dictionary> globalConfiguration);
  /// A context that is made for another's evaluation shares what that one has found in the
  /// configuration, if it is the same.
  ADMEvaluationContextBase(Value statusService, RefPtr<Dictionary> globalConfiguration,
                           ADMEvaluationContext& parent);
  /// Tells making a child, with its parent's service and configuration, from making a copy.
  struct CalledFrom {};
  ADMEvaluationContextBase(CalledFrom /*unused*/, ADMEvaluationContextBase& parent)
      : statusService_(parent.statusService_),
        shared_(RefPtr<SharedConfiguration>(parent.sharedConfiguration())) {}
  ADMEvaluationContextBase(CalledFrom /*unused*/, ADMEvaluationContext& parent);
  ~ADMEvaluationContextBase() override;

  /// The answer of the status service to a message, with the object when it takes one; nil when it
  /// does not answer to it.
  [[nodiscard]] Value askService(const Selector& selector, const Value& object) {
    const Value& known = knownAnswer(selector, object);
    // What is asked may replace the list that the object is an element of.
    return known.isNil() ? sendToService(selector, Value(object)) : known.nullAsNil();
  }
  /// What the status service is known to answer, see ADMMessageSource; nil until it is asked.
  [[nodiscard]] const Value& knownAnswer(const Selector& selector,
                                         const Value& object) const noexcept {
    static constexpr Value kNone;
    return messageSource_ != nullptr ? messageSource_->knownAnswer(selector, object) : kNone;
  }
  /// The status service, borrowed.
  [[nodiscard]] const Value& service() const noexcept { return statusService_; }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  /// The value at a path without "@".
  [[nodiscard]] Value valueForFeaturePath(const Array& components);
  /// The value at a path with what "@" stands for in its place.
  [[nodiscard]] Value valueForCurrentFeaturePath(const Array& components);
  void findSources();
  /// `askService` when the answer is not known.
  [[nodiscard]] Value sendToService(const Selector& selector, const Value& object);
  /// nullptr without a configuration. Borrowed.
  [[nodiscard]] SharedConfiguration* sharedConfiguration() {
    return shared_ ? shared_.get() : makeSharedConfiguration();
  }
  SharedConfiguration* makeSharedConfiguration();
  /// Executes a macro, or a procedure that has to be called in the general way.
  Value executeOtherProcedure(const Method* procedure, const EvaluationName& name,
                              const Array* arguments);
  /// Executes a procedure that has to be called in the general way, or fails.
  Value executeRareProcedure(const Method* procedure, const EvaluationName& name,
                             const Array* arguments);
  /// nullptr when there is no macro of that name.
  [[nodiscard]] const CompiledMacro* macroNamed(const EvaluationName& name);
  Value executeMacro(const CompiledMacro& macro, const Array* arguments);

  RefPtr<MutableDictionary> commonCache_;
  RefPtr<ADMEvaluationError> lastError_;
  Value statusService_;
  /// The status service as feature paths and as messages see it; nullptr when it takes none at
  /// once, and until it is asked for.
  ADMFeaturePathSource* featurePathSource_ = nullptr;
  ADMMessageSource* messageSource_ = nullptr;
  bool hasFoundSources_ = false;
  /// May be nil when it stands in what is shared.
  RefPtr<Dictionary> globalConfiguration_;
  /// nil until it is needed.
  RefPtr<SharedConfiguration> shared_;
};

}  // namespace commandfilter
