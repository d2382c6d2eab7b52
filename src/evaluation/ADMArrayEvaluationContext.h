// Contexts that walk over a list.
#pragma once

#include <cstdint>
#include <utility>

#include "evaluation/ADMEvaluationContextBase.h"
#include "evaluation/protocol/ADMArrayIteration.h"
#include "runtime/Array.h"

namespace commandfilter {

/// Evaluates one element of a list after another: "identifier" and "element" name the current one,
/// "index" its place, and the status service is asked about it.
class COMMANDFILTER_EXPORT ADMArrayEvaluationContext
    : public Implements<ADMEvaluationContextBase, ADMArrayIteration> {
 public:
  static const Class kClass;

  /// Service and configuration may be nil, and so may the list, which is an array.
  [[nodiscard]] static Ref<ADMArrayEvaluationContext>
  initWithStatusService_globalConfiguration_elementsList(Value statusService,
                                                         RefPtr<Dictionary> globalConfiguration,
                                                         Value elementsList);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  bool iterateNext() final { return ++currentElement_ < listSize_; }
  [[nodiscard]] bool endOfIteration() const final { return currentElement_ >= listSize_; }
  /// @throws Exception when the list is neither an array nor a dictionary.
  void resetIteration(const Value& list) final;

  Value serviceSymbolForNameImpl(const EvaluationName& name) override;
  Value processSelectorImpl(const Selector& selector) override;
  /// The current element.
  /// @throws Exception when the list is no array.
  Value defaultServiceSymbolValue() override;

 protected:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ADMArrayEvaluationContext(Value statusService, RefPtr<Dictionary> globalConfiguration,
                            Value elementsList);
  ADMArrayEvaluationContext(Value statusService, RefPtr<Dictionary> globalConfiguration,
                            Value elementsList, ADMEvaluationContext& parent);
  /// With the parent's service and configuration.
  ADMArrayEvaluationContext(CalledFrom proof, ADMEvaluationContextBase& parent, Value elementsList);
  ~ADMArrayEvaluationContext() override = default;

  /// The element as it is stored; nil behind the last, and before there is a list. Borrowed from
  /// the list.
  [[nodiscard]] const Value& currentElement() const {
    const bool isThere = array_ != nullptr && currentElement_ < array_->count();
    return isThere ? (*array_)[currentElement_] : missingElement();
  }
  /// What the service is known to answer about the element; nil when it has to be asked.
  [[nodiscard]] const Value& knownAnswerAboutElement(const Selector& selector) const noexcept {
    static constexpr Value kNone;
    const bool isThere = array_ != nullptr && currentElement_ < array_->count();
    return isThere ? knownAnswer(selector, (*array_)[currentElement_]) : kNone;
  }
  [[nodiscard]] Value currentIndex() const noexcept { return Number::integer(currentElement_); }

 private:
  void setElementsList(Value list);
  [[nodiscard]] const Value& missingElement() const;

  Value elementsList_;
  /// The list when it is an array.
  const Array* array_ = nullptr;
  std::uint64_t listSize_ = 0;
  std::uint64_t currentElement_ = 0;
};

}  // namespace commandfilter
