// Who brings the framework a way to a device.
#pragma once

#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/String.h"

namespace commandfilter {

/// Takes the place of the framework's own transports for one device.
class COMMANDFILTER_EXPORT ADMIOProvider : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// The class that implements the protocol of that name, "IDMDevice" for the device itself;
  /// nullptr when the provider has none, and for a nil name.
  virtual const Class* implementorClassForProtocolWithName(const String* name) = 0;

 protected:
  ~ADMIOProvider() = default;
};

}  // namespace commandfilter
