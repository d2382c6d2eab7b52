// What is done with supplies.
#pragma once

#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/RunLoop.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The supplies of a device as something to act on. As in `ADMInterface`, a service overrides what
/// it can do.
class COMMANDFILTER_EXPORT ADMSuppliesManagement : public ProtocolBase {
 public:
  static const Protocol kProtocol;
  /// The rows of `suppliesStateAcknowledgment` and `scheduleRetrieveSuppliesWarrantyValue`; the two
  /// others are those of `ADMStatus`.
  static const MethodGroup kMethods;

  /// What the user has acknowledged of the supplies' state.
  virtual Value suppliesStateAcknowledgment() { return {}; }
  /// Has changes noticed while the mode of the run loop runs.
  virtual void scheduleInRunLoop_forMode(RunLoop* /*runLoop*/, const String* /*mode*/) {}
  /// Takes what the service waits for out of the mode of the run loop.
  virtual void removeFromRunLoop_forMode(RunLoop* /*runLoop*/, const String* /*mode*/) {}
  /// Begins to ask the device for the value that `warrantyValue` gives.
  virtual void scheduleRetrieveSuppliesWarrantyValue() {}

 protected:
  ~ADMSuppliesManagement() = default;
};

}  // namespace commandfilter
