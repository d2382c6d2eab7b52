// Reading an IEEE 1284 device ID.
#pragma once

#include "runtime/Array.h"
#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter {

/// What the framework's class named "ADMDeviceIDInterpreter" does with a device ID.
class COMMANDFILTER_EXPORT ADMDeviceIDInterpreter : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// An interpreter of the ID, made with the class's `initWithDeviceIDString:`; nil when the
  /// framework has no such class or it refuses.
  [[nodiscard]] static RefPtr<ADMDeviceIDInterpreter> initWithDeviceIDString(
      const String& deviceID);

  /// The printer languages that the ID lists, as strings in its order; nil when it lists none.
  virtual RefPtr<Array> languages() = 0;

 protected:
  ~ADMDeviceIDInterpreter() = default;
};

}  // namespace commandfilter
