// The way from inside an evaluation back to the template.
#pragma once

#include "evaluation/protocol/ADMNamedValues.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

class ADMTemplateProcessor;

/// Stands under "EntireTemplateProcessor" in the global configuration and answers other values of
/// the same template. It does not own the processor, which owns the configuration; once the
/// processor is gone, every value is nil.
class COMMANDFILTER_EXPORT ADMTemplateProcessorHolder final
    : public Implements<Object, ADMNamedValues> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ADMTemplateProcessorHolder> initWithTemplateProcessor(
      ADMTemplateProcessor* processor);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  /// The processor's value for the key.
  /// @throws Exception whatever the computation raises.
  Value valueForKey(const String* key);
  Value valueNamed(const String& name) override { return valueForKey(&name); }

  /// Used by the processor when it goes: a context that a plug-in has kept may still ask.
  void forgetTemplateProcessor() noexcept { processor_ = nullptr; }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ADMTemplateProcessorHolder(ADMTemplateProcessor* processor) noexcept
      : processor_(processor) {}
  ~ADMTemplateProcessorHolder() override = default;

  /// Not owned.
  ADMTemplateProcessor* processor_;
};

}  // namespace commandfilter
