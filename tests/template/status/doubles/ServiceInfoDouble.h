// A device as a test describes it.
#pragma once

#include <array>
#include <cstdint>

#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/device_model/ADMServiceInfo.h"

namespace commandfilter::testing {

/// Gives what its fields hold, and needs no resolution.
class ServiceInfoDouble final : public Implements<Object, ADMServiceInfo> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ServiceInfoDouble> create(std::int32_t state = 1) {
    Ref<ServiceInfoDouble> info = make<ServiceInfoDouble>();
    info->state = state;
    return info;
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  void setDelegate(ADMServiceInfoDelegate* /*delegate*/) override {}
  void scheduleInRunLoop_forMode(RunLoop& /*runLoop*/, const String& /*mode*/) override {}
  void removeFromRunLoop_forMode(RunLoop& /*runLoop*/, const String& /*mode*/) override {}
  void resolveWithTimeout(double /*seconds*/) override {}
  std::int32_t serviceState() override { return state; }
  RefPtr<String> uri() override { return deviceURI; }
  RefPtr<String> connectionType() override { return connection; }
  RefPtr<String> vendorName() override { return vendor; }
  RefPtr<String> modelName() override { return model; }
  RefPtr<Dictionary> connectionParams() override { return parameters; }
  RefPtr<ADMModelInfo> modelInfo() override { return nullptr; }

  std::int32_t state = 1;
  RefPtr<String> deviceURI;
  RefPtr<String> connection;
  RefPtr<String> vendor;
  RefPtr<String> model;
  RefPtr<Dictionary> parameters;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);
  ServiceInfoDouble() = default;
  ~ServiceInfoDouble() override = default;
};

inline constexpr auto kServiceInfoProtocols = conformances<ServiceInfoDouble, ADMServiceInfo>();
inline constinit const Class ServiceInfoDouble::kClass{
    .name = "ServiceInfoDouble", .base = &Object::kClass, .protocols = kServiceInfoProtocols};

}  // namespace commandfilter::testing
