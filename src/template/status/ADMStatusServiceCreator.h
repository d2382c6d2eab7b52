// Who makes the status services of a device.
#pragma once

#include <cstdint>

#include "runtime/Export.h"
#include "runtime/MutableDictionary.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

class RecentQuestions;

/// Makes the status services of one device by name, each once, and keeps a cache for each name. It
/// stands under "ServiceCreator" in the global configuration of a template.
class COMMANDFILTER_EXPORT ADMStatusServiceCreator : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// The service itself; nil for a nil or empty name and when there is no such service, which is
  /// tried once. Making it may wait for the device and may run plug-in code, whose exceptions pass
  /// through.
  virtual Value statusServiceForName(const String* name) = 0;
  /// The store of what the service of that name has answered, the same one until
  /// `reinitializeServices`; nil for a nil name.
  virtual RefPtr<MutableDictionary> userInfoForServiceName(const String* name) = 0;
  /// NO when the device is not usable; then there is no service at all.
  virtual bool servicesAvailable() = 0;
  /// Forgets all services and all that they have answered.
  virtual void reinitializeServices() = 0;
  /// A number above 0 that changes whenever a service or a store that was given out is not the
  /// current one of its name any more: until then a proxy need not ask for it again. 0, which the
  /// base answers, says that it has to ask every time.
  [[nodiscard]] virtual std::uint64_t generation() const noexcept { return 0; }
  /// What the proxies for that name remember together; nil, which the base answers, when each of
  /// them has to remember for itself.
  [[nodiscard]] virtual RefPtr<RecentQuestions> recentQuestionsForServiceName(const String& name);

 protected:
  ~ADMStatusServiceCreator() = default;
};

}  // namespace commandfilter
