// Status services by protocol.
#pragma once

#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Makes the objects that know a device's status.
class COMMANDFILTER_EXPORT ADMStatusFactory : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// A new object that conforms to the protocol, `ADMDeviceStatus::kProtocol` or
  /// `ADMSuppliesStatus::kProtocol`, for a resolved device; nil when the device has no such
  /// service. Its messages are to be sent by name: the object decides which ones it answers.
  virtual Value interfaceForProtocol_serviceInfo(const Protocol& protocol,
                                                 const Value& serviceInfo) = 0;

 protected:
  ~ADMStatusFactory() = default;
};

}  // namespace commandfilter
