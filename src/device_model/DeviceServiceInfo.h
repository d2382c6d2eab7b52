// What the module's service infos have in common: how they resolve.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/RunLoop.h"
#include "runtime/RunLoopSource.h"
#include "runtime/device_model/ADMServiceInfo.h"

namespace commandfilter {

/// A device of this module. Besides the protocol's messages it answers what the module's other
/// classes ask of a device.
class DeviceServiceInfo : public Implements<Object, ADMServiceInfo> {
 public:
  static const Class kClass;

  void setDelegate(ADMServiceInfoDelegate* delegate) override { delegate_ = delegate; }
  void scheduleInRunLoop_forMode(RunLoop& runLoop, const String& mode) override;
  void removeFromRunLoop_forMode(RunLoop& runLoop, const String& mode) override;
  void resolveWithTimeout(double seconds) override;
  [[nodiscard]] std::int32_t serviceState() override { return state_; }

  /// The device's IEEE 1284 device ID; nil when it has none. May wait for the device.
  [[nodiscard]] virtual RefPtr<String> deviceID() = 0;
  /// A new status service for the protocol; nil when the device has none.
  [[nodiscard]] virtual Value statusService(const Protocol& protocol) = 0;
  /// A new capabilities provider; nil when the device has none.
  [[nodiscard]] virtual Value capabilitiesProvider() = 0;

 protected:
  DeviceServiceInfo() = default;
  ~DeviceServiceInfo() override = default;

  /// How a resolution goes.
  struct Resolution {
    /// Seconds until its end.
    double delay = 0;
    /// The state that it ends in.
    std::int32_t state = kServiceStateResolved;
    /// Why it fails; empty when it succeeds.
    std::string failure;
  };
  /// Asked once at the beginning of each resolution.
  [[nodiscard]] virtual Resolution resolution() = 0;

 private:
  /// A mode of a run loop that the service info was scheduled in.
  struct Place {
    Ref<RunLoop> runLoop;
    Ref<String> mode;
    RunLoopSource timer;
  };

  void startTimer(Place& place);
  void finish();

  ADMServiceInfoDelegate* delegate_ = nullptr;
  std::vector<Place> places_;
  std::optional<Resolution> running_;
  RunLoop::Deadline end_{};
  std::int32_t state_ = 0;
};

}  // namespace commandfilter
