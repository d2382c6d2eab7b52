// Contexts for a single value.
#pragma once

#include <utility>

#include "evaluation/ADMEvaluationContextBase.h"

namespace commandfilter {

/// Asks the status service by sending it the bare name.
class COMMANDFILTER_EXPORT ADMSingleValueEvaluationContext : public ADMEvaluationContextBase {
 public:
  static const Class kClass;

  /// Either may be nil.
  [[nodiscard]] static Ref<ADMSingleValueEvaluationContext>
  initWithStatusService_globalConfiguration(Value statusService,
                                            RefPtr<Dictionary> globalConfiguration);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value processSelectorImpl(const Selector& selector) override;

 protected:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  using ADMEvaluationContextBase::ADMEvaluationContextBase;
  ~ADMSingleValueEvaluationContext() override = default;
};

}  // namespace commandfilter
