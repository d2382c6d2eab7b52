// The device that a template is asked about.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <utility>

#include "device/BackendProcess.h"
#include "runtime/Ref.h"
#include "runtime/device_model/ADMServiceInfo.h"

namespace commandfilter::tools {

/// A device that can be asked, as long as the object lives.
class Device {
 public:
  /// The resolved device that `name` names: the path of a device description, a device URI, or a
  /// queue of the scheduler. For the URI of a real device its backend is started. May wait for the
  /// device.
  /// @throws UsageError when there is nothing of that name, when the description cannot be used,
  /// when the device does not resolve, when its backend cannot be started, and when the device
  /// model is not installed.
  [[nodiscard]] static Device open(const std::string& name);

  [[nodiscard]] const Ref<ADMServiceInfo>& serviceInfo() const noexcept { return info_; }
  /// NO for a device that is described in a file.
  [[nodiscard]] bool isReal() const noexcept { return isReal_; }
  /// Writes what the device's backend has complained about, or what a description has in vain, a
  /// line each.
  void noteComplaints(std::ostream& messages) const;

 private:
  Device(std::string name, std::unique_ptr<BackendProcess> backend, Ref<ADMServiceInfo> info,
         bool isReal)
      : name_(std::move(name)),
        backend_(std::move(backend)),
        info_(std::move(info)),
        isReal_(isReal) {}

  std::string name_;
  /// nullptr for a described device.
  std::unique_ptr<BackendProcess> backend_;
  Ref<ADMServiceInfo> info_;
  bool isReal_;
};

}  // namespace commandfilter::tools
