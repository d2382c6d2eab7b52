// A path to a feature of the device.
#pragma once

#include <utility>

#include "expression/ADMEvaluationItemBase.h"
#include "expression/SharedPath.h"
#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// {Name}.a.b[Key]: the components as an array of strings, the key last.
class COMMANDFILTER_EXPORT ADMEvaluationFeaturePath final : public ADMEvaluationItemBase {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ADMEvaluationFeaturePath> itemWithFeaturePathComponents(
      Ref<Array> featurePath) {
    return make<ADMEvaluationFeaturePath>(std::move(featurePath));
  }
  /// An item that keeps the path for others that are written alike.
  [[nodiscard]] static Ref<ADMEvaluationFeaturePath> itemWithSharedPath(Ref<SharedPath> path) {
    return make<ADMEvaluationFeaturePath>(std::move(path));
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] const Ref<Array>& featurePath() const noexcept { return featurePath_; }

  [[nodiscard]] Value evaluate(ADMEvaluationContext& context) const override;
  void print(TreePrinter& printer) const override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ADMEvaluationFeaturePath(Ref<Array> featurePath)
      : ADMEvaluationItemBase(ItemType::FeaturePath, Holding::NoChain),
        featurePath_(std::move(featurePath)) {}
  explicit ADMEvaluationFeaturePath(Ref<SharedPath> path)
      : ADMEvaluationItemBase(ItemType::FeaturePath, Holding::NoChain),
        featurePath_(path->components()),
        sharedPath_(std::move(path)) {}
  ~ADMEvaluationFeaturePath() override = default;

  Ref<Array> featurePath_;
  // nil when the components did not come from an expression.
  RefPtr<SharedPath> sharedPath_;
};

}  // namespace commandfilter
