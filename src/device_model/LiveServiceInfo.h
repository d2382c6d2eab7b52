// A real device.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "device_model/BackendTransport.h"
#include "device_model/DeviceID.h"
#include "device_model/DeviceServiceInfo.h"
#include "device_model/QueueFacts.h"
#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/device_model/ADMIOProvider.h"
#include "runtime/device_model/IDMDevice.h"

namespace commandfilter {

/// Where the facts of a real device come from. Both live as long as the process.
struct DeviceSources {
  std::reference_wrapper<BackendTransport> backend;
  std::reference_wrapper<QueueFacts> queue;

  /// The backend and the queue of this process's job. Nothing is opened before it is asked.
  [[nodiscard]] static DeviceSources ofThisJob();
};

/// The device of any URI that is not simulated. It resolves at once, for there is nothing that a
/// filter could do to reach the device; what is asked later asks the device, each fact at most
/// once.
class LiveServiceInfo final : public DeviceServiceInfo {
 public:
  static const Class kClass;

  /// The I/O provider, which may be nil, names the class of the device that answers for the device
  /// ID, model and vendor; without it the backend is asked, then the queue's PPD.
  [[nodiscard]] static Ref<LiveServiceInfo> create(const String& uri, ADMIOProvider* ioProvider,
                                                   DeviceSources sources);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] RefPtr<String> uri() override { return uri_; }
  [[nodiscard]] RefPtr<String> connectionType() override;
  [[nodiscard]] RefPtr<String> vendorName() override;
  [[nodiscard]] RefPtr<String> modelName() override;
  [[nodiscard]] RefPtr<Dictionary> connectionParams() override;
  [[nodiscard]] RefPtr<ADMModelInfo> modelInfo() override;
  [[nodiscard]] RefPtr<String> deviceID() override;
  [[nodiscard]] Value statusService(const Protocol& protocol) override;
  [[nodiscard]] Value capabilitiesProvider() override;

  /// True when the device itself has given an ID.
  [[nodiscard]] bool isReachable();
  /// The device ID, taken apart; empty when there is none.
  [[nodiscard]] const DeviceID& interpretedID();
  [[nodiscard]] BackendTransport& backend() const noexcept { return sources_.backend; }
  /// The queue's attributes.
  [[nodiscard]] const QueueAttributes& queueAttributes();
  /// What the queue's PPD says can be built into the device.
  [[nodiscard]] std::vector<InstallableOption> installableOptions() {
    return sources_.queue.get().installableOptions();
  }
  /// The serial number in the URI; empty when there is none.
  [[nodiscard]] std::string serialNumberInURI();

 protected:
  [[nodiscard]] Resolution resolution() override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  LiveServiceInfo(Ref<String> uri, RefPtr<ADMIOProvider> ioProvider, DeviceSources sources)
      : uri_(std::move(uri)), ioProvider_(std::move(ioProvider)), sources_(sources) {}
  ~LiveServiceInfo() override = default;

  IDMDevice* device();
  /// What the I/O provider's device says under the key; nil without one, or when it is empty.
  RefPtr<String> parameter(std::string_view key);
  RefPtr<String> readDeviceID();

  Ref<String> uri_;
  RefPtr<ADMIOProvider> ioProvider_;
  DeviceSources sources_;
  bool deviceMade_ = false;
  RefPtr<IDMDevice> device_;
  RefPtr<Dictionary> parameters_;
  RefPtr<Dictionary> connectionParams_;
  RefPtr<ADMModelInfo> modelInfo_;
  bool deviceIDRead_ = false;
  RefPtr<String> deviceID_;
  std::optional<DeviceID> interpretedID_;
};

}  // namespace commandfilter
