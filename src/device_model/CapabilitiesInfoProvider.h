// The framework's class for what a model can do.
#pragma once

#include <utility>

#include "runtime/Class.h"
#include "runtime/Invocation.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/device_model/ADMModelInfo.h"

namespace commandfilter {

/// Found under the name "ADMCapabilitiesInfoProvider". A real device's capabilities are what the
/// table "Capabilities" holds for its model: each info path is a message without arguments. The
/// table is the registered one of that name, or that in the program's bundle. A simulated device's
/// capabilities are described with it.
class CapabilitiesInfoProvider final : public Object {
 public:
  static const Class kClass;

  /// The provider of a device of this module, which may be of another class; nil for everything
  /// else.
  [[nodiscard]] static Value initWithServiceInfo(const Value& serviceInfo);
  /// A provider for a model.
  [[nodiscard]] static Ref<CapabilitiesInfoProvider> create(ADMModelInfo& modelInfo);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] bool respondsToSelector(const Selector& selector) const override;
  [[nodiscard]] MethodSignature methodSignatureForSelector(const Selector& selector) const override;
  void forwardInvocation(Invocation& invocation) override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit CapabilitiesInfoProvider(Ref<ADMModelInfo> modelInfo)
      : modelInfo_(std::move(modelInfo)) {}
  ~CapabilitiesInfoProvider() override = default;

  [[nodiscard]] Value capability(const Selector& selector) const;

  Ref<ADMModelInfo> modelInfo_;
};

}  // namespace commandfilter
