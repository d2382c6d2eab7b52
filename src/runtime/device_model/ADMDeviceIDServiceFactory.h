// The framework's way to a device's IEEE 1284 device ID.
#pragma once

#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Reads the device ID of one device.
class COMMANDFILTER_EXPORT ADMDeviceIDAccessProvider : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// The IEEE 1284 device ID, such as `MFG:Acme;MDL:M1;CMD:PCL,LDL;`; nil when the device gives
  /// none. May wait for the device.
  virtual RefPtr<String> deviceID() = 0;

 protected:
  ~ADMDeviceIDAccessProvider() = default;
};

/// Makes access providers.
class COMMANDFILTER_EXPORT ADMDeviceIDServiceFactory : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// The provider for a device; nil when there is none. The service info may be nil.
  virtual RefPtr<ADMDeviceIDAccessProvider> deviceIDAccessProviderForServiceInfo(
      const Value& serviceInfo) = 0;

 protected:
  ~ADMDeviceIDServiceFactory() = default;
};

}  // namespace commandfilter
