// A printer as it is reached over the CUPS side channel.
#pragma once

#include <memory>
#include <utility>

#include "device_io/SideChannel.h"
#include "filter/environment/ACommandFilterEnvironment.h"
#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "runtime/device_model/IDMDevice.h"

namespace commandfilter {

/// Answers the device-model framework from the side channel, the connection information that the
/// framework brings, and the queue's PPD.
class ADMCUPSSideChannelDevice final : public Implements<Object, IDMDevice> {
 public:
  static const Class kClass;

  /// A device on CUPS's own side channel; never nil. The entries of the dictionary under
  /// `kParamsProp` win over those of the information itself. The handler is not used.
  [[nodiscard]] static RefPtr<ADMCUPSSideChannelDevice> initFromInfo_withHandler(
      const Dictionary* info, const Value& handler);
  /// The same on another side channel.
  [[nodiscard]] static Ref<ADMCUPSSideChannelDevice> deviceFromInfo_sideChannel(
      const Dictionary* info, std::unique_ptr<SideChannel> sideChannel);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  /// The shared environment, fetched on first use; nullptr when this is no command job.
  [[nodiscard]] ACommandFilterEnvironment* environment();
  /// Always "Vemo".
  [[nodiscard]] static Ref<String> vendorName();
  /// The "ModelName" of the queue's PPD, read once; empty when there is none, or no UTF-8.
  [[nodiscard]] Ref<String> ppdModelName();
  /// The connection information, flattened.
  [[nodiscard]] const Ref<Dictionary>& connectionProperties() const noexcept {
    return connectionProperties_;
  }

  /// True when a device ID can be read.
  bool isReachable() override;
  /// The device ID, kept once it was read. A device that does not answer is asked three times,
  /// for 20, 40 and 60 seconds, whatever timeout is given; a failure is not remembered.
  RefPtr<String> newRetrievedDeviceIDWithTimeout(double timeout) override;
  /// The connection properties under the keys. Model and vendor name are always there, from the
  /// PPD and constant where the properties have none. The handler is not used.
  Ref<Dictionary> retrieveParameters_withHandler(const Array& keys, const Value& handler) override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  ADMCUPSSideChannelDevice(Ref<Dictionary> connectionProperties,
                           std::unique_ptr<SideChannel> sideChannel)
      : connectionProperties_(std::move(connectionProperties)),
        sideChannel_(std::move(sideChannel)) {}
  ~ADMCUPSSideChannelDevice() override = default;

  RefPtr<String> requestDeviceID();
  RefPtr<String> readPPDModelName();

  Ref<Dictionary> connectionProperties_;
  RefPtr<String> deviceIDString_;
  RefPtr<String> ppdModelName_;
  /// Not owned: it lives as long as the process.
  ACommandFilterEnvironment* environment_ = nullptr;
  std::unique_ptr<SideChannel> sideChannel_;
};

}  // namespace commandfilter
