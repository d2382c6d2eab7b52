// The mark of a service that the context hands out.
#pragma once

#include "runtime/Export.h"
#include "runtime/Protocol.h"

namespace commandfilter {

/// Marks a service: an object of a class named "ACommandFilter" + name + "Service" with an
/// initialiser row `initWithServiceInfoProvider:`, a static function that takes an
/// `ICommandFilterServiceInfoProvider*` (nil when there is no device) and returns the new service,
/// or nil to refuse.
class COMMANDFILTER_EXPORT ICommandFilterService : public ProtocolBase {
 public:
  static const Protocol kProtocol;

 protected:
  ~ICommandFilterService() = default;
};

}  // namespace commandfilter
