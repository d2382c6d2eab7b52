// Who is told how a resolution ended.
#pragma once

#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Value.h"

namespace commandfilter {

class ADMServiceInfo;

/// Gets exactly one of these calls for each `resolveWithTimeout:`, on the thread that resolves:
/// from the run loop, or before `resolveWithTimeout:` returns when there is nothing to wait for.
class COMMANDFILTER_EXPORT ADMServiceInfoDelegate : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// The resolution has ended well.
  virtual void serviceInfoDidResolve(ADMServiceInfo& serviceInfo) = 0;
  /// The resolution has failed. The description of `error` is one sentence for a person; it may be
  /// nil.
  virtual void serviceInfo_didNotResolve(ADMServiceInfo& serviceInfo, const Value& error) = 0;

 protected:
  ~ADMServiceInfoDelegate() = default;
};

}  // namespace commandfilter
