// The framework's description of one device.
#pragma once

#include <cstdint>

#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/device_model/ADMModelInfo.h"
#include "runtime/device_model/ADMServiceInfoDelegate.h"
#include "runtime/device_model/DeviceModelConstants.h"

namespace commandfilter {

class RunLoop;

/// One device, named by its URI. It is unresolved when it is made; resolving finds out whether and
/// how the device can be reached. What describes the device may wait for it, and is nil as long as
/// it is not known.
class COMMANDFILTER_EXPORT ADMServiceInfo : public ProtocolBase {
 public:
  static const Protocol kProtocol;
  /// Rows for the messages that describe the device; a class that conforms lists them under its
  /// groups, so that they can be sent by name too.
  static const MethodGroup kMethods;

  /// Who is told the outcome; not owned, it must live until it was told or another is set. nil
  /// means nobody.
  virtual void setDelegate(ADMServiceInfoDelegate* delegate) = 0;
  /// Adds what the resolution waits for to the run loop's mode, now and until it is removed.
  virtual void scheduleInRunLoop_forMode(RunLoop& runLoop, const String& mode) = 0;
  /// Takes everything of this service info out of the run loop's mode.
  virtual void removeFromRunLoop_forMode(RunLoop& runLoop, const String& mode) = 0;
  /// Begins to resolve. Fails when it has taken so many seconds.
  virtual void resolveWithTimeout(double seconds) = 0;

  /// `kServiceStateResolved` when services can be made; any other value when not, or not yet.
  virtual std::int32_t serviceState() = 0;
  /// The device URI that the service info was made for, or the one that its resolution gave.
  virtual RefPtr<String> uri() = 0;
  /// How the device is connected, `kRendezvousConnectionType` for one found by multicast DNS.
  virtual RefPtr<String> connectionType() = 0;
  /// The maker's name.
  virtual RefPtr<String> vendorName() = 0;
  /// The model's name, which the model-information tables go by.
  virtual RefPtr<String> modelName() = 0;
  /// Facts of the connection by name, the address under `kIPAddressParam` among them.
  virtual RefPtr<Dictionary> connectionParams() = 0;
  /// The tables' entries for the device's model.
  virtual RefPtr<ADMModelInfo> modelInfo() = 0;

 protected:
  ~ADMServiceInfo() = default;
};

}  // namespace commandfilter
