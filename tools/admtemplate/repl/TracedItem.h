// An item whose evaluation is watched.
#pragma once

#include <memory>
#include <utility>

#include "expression/ADMEvaluationItemBase.h"
#include "repl/SourceText.h"
#include "repl/Trace.h"
#include "runtime/Class.h"

namespace commandfilter::tools {

/// Stands in a tree in the place of an item, evaluates it and tells the trace.
class TracedItem final : public ADMEvaluationItemBase {
 public:
  static const Class kClass;

  /// `extent`: the part of the source that the item stands for.
  [[nodiscard]] static Ref<TracedItem> create(ADMEvaluationItemBase& item,
                                              std::shared_ptr<const SourceText> source,
                                              const SourceRange& extent,
                                              std::shared_ptr<Trace> trace) {
    return make<TracedItem>(Ref<ADMEvaluationItemBase>(item), std::move(source), extent,
                            std::move(trace));
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] Value evaluate(ADMEvaluationContext& context) const override;
  void print(TreePrinter& printer) const override { item_->print(printer); }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  TracedItem(Ref<ADMEvaluationItemBase> item, std::shared_ptr<const SourceText> source,
             const SourceRange& extent, std::shared_ptr<Trace> trace)
      : ADMEvaluationItemBase(typeFor(*item)),
        item_(std::move(item)),
        source_(std::move(source)),
        extent_(extent),
        trace_(std::move(trace)) {
    setSourceRange(item_->sourceRange());
  }
  ~TracedItem() override = default;

  /// The item's own, but never that of a text or a number, which are taken for what has the type.
  [[nodiscard]] static ItemType typeFor(const ADMEvaluationItemBase& item) noexcept;

  Ref<ADMEvaluationItemBase> item_;
  std::shared_ptr<const SourceText> source_;
  SourceRange extent_;
  std::shared_ptr<Trace> trace_;
};

}  // namespace commandfilter::tools
