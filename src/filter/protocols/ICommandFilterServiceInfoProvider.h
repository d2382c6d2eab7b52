// How a service learns which device the job goes to.
#pragma once

#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Gives the device's service info.
class COMMANDFILTER_EXPORT ICommandFilterServiceInfoProvider : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// The resolved service info of the device, an object of the device-model framework; nil when
  /// the device cannot be resolved. The first call may wait for the device.
  virtual Value serviceInfo() = 0;

 protected:
  ~ICommandFilterServiceInfoProvider() = default;
};

}  // namespace commandfilter
