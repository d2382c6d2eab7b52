// Who makes the services that expressions name.
#pragma once

#include <map>
#include <string>
#include <utility>

#include "language/CallLog.h"
#include "language/DeviceDouble.h"
#include "runtime/Class.h"
#include "runtime/MutableDictionary.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "template/status/ADMStatusServiceCreator.h"

namespace commandfilter::testing {

/// Stands under "ServiceCreator". Each service is a device double; that it was made is noted as
/// "new Name".
class CreatorDouble final : public Implements<Object, ADMStatusServiceCreator> {
 public:
  static const Class kClass;
  /// The facts must outlive the object.
  using Services = std::map<std::string, const DeviceFacts*, std::less<>>;

  /// The log must outlive the object.
  [[nodiscard]] static Ref<CreatorDouble> create(Services services, CallLog& log) {
    return make<CreatorDouble>(std::move(services), log);
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value statusServiceForName(const String* name) override;
  RefPtr<MutableDictionary> userInfoForServiceName(const String* name) override;
  bool servicesAvailable() override { return true; }
  void reinitializeServices() override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  CreatorDouble(Services services, CallLog& log) : services_(std::move(services)), log_(log) {}
  ~CreatorDouble() override = default;

  Services services_;
  CallLog& log_;
  std::map<std::string, Value, std::less<>> made_;
  std::map<std::string, Ref<MutableDictionary>, std::less<>> caches_;
};

}  // namespace commandfilter::testing
