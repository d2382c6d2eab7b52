// The tables of model information.
#pragma once

#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter {

/// What the framework's class named "ADMModelInfoManager" does.
class COMMANDFILTER_EXPORT ADMModelInfoManager : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// The framework's one manager, from the class method of that name; nil when the framework is
  /// missing.
  [[nodiscard]] static RefPtr<ADMModelInfoManager> sharedManager();

  /// Makes the table of that name at the location known to every model info. What a location
  /// designates is the framework's business. A name that is registered again means the table at
  /// the new location from then on.
  /// @return NO when a name is nil or there is no such table.
  virtual bool registerTable_location(const String* table, const String* location) = 0;

 protected:
  ~ADMModelInfoManager() = default;
};

}  // namespace commandfilter
