// Status services of the module's devices.
#pragma once

#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/device_model/ADMStatusFactory.h"

namespace commandfilter {

/// Asks the device for its service.
class StatusFactory final : public Implements<Object, ADMStatusFactory> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<StatusFactory> create() { return make<StatusFactory>(); }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// nil for a service info that is not of this module.
  [[nodiscard]] Value interfaceForProtocol_serviceInfo(const Protocol& protocol,
                                                       const Value& serviceInfo) override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  StatusFactory() = default;
  ~StatusFactory() override = default;
};

}  // namespace commandfilter
