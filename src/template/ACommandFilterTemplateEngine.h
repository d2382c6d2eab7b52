// The template engine that executors get.
#pragma once

#include <utility>

#include "filter/protocols/ICommandFilterTemplateEngine.h"
#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "template/ADMTemplateProcessor.h"

namespace commandfilter {

/// A template processor of its own for one template and one device; two engines share nothing.
class COMMANDFILTER_EXPORT ACommandFilterTemplateEngine final
    : public Implements<Object, ICommandFilterTemplateEngine> {
 public:
  static const Class kClass;

  /// An engine also when it has nothing to work with: without a service info or a template it
  /// answers nil to everything. The input parameters may be nil.
  [[nodiscard]] static Ref<ACommandFilterTemplateEngine>
  initWithServiceInfo_configurationTemplate_inputParameters(const Value& serviceInfo,
                                                            const Dictionary* configurationTemplate,
                                                            const Dictionary* inputParameters);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  /// The value; nil also when its computation raises an exception, of which `errorInfo` need not
  /// know.
  Value templateValueForKey(const String* key) override;
  Value errorInfo() override;

  /// What the engine asks; nil when it has nothing to work with. Borrowed.
  [[nodiscard]] ADMTemplateProcessor* templateProcessor() const noexcept {
    return templateProcessor_.get();
  }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ACommandFilterTemplateEngine(RefPtr<ADMTemplateProcessor> processor)
      : templateProcessor_(std::move(processor)) {}
  ~ACommandFilterTemplateEngine() override = default;

  RefPtr<ADMTemplateProcessor> templateProcessor_;
};

}  // namespace commandfilter
