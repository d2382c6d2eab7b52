// What answers feature paths.
#pragma once

#include "runtime/Array.h"
#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// A status service as feature paths see it.
class COMMANDFILTER_EXPORT ADMFeaturePathSource : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// The value at the path of components, nil when there is none. `errorInfo` becomes the reason
  /// when the path cannot be answered, otherwise nil. May wait for the device.
  virtual Value valueForFeaturePathComponents_errorInfo(const Array& components,
                                                        RefPtr<String>& errorInfo) = 0;
  /// What the path's value is known to be, without waiting: borrowed until the next question or
  /// until the services are forgotten, the null object for nil. nil, which the base answers, when
  /// it has to be asked for.
  [[nodiscard]] virtual const Value& knownValueForFeaturePathComponents(
      const Array& components) const;

 protected:
  ~ADMFeaturePathSource() = default;
};

}  // namespace commandfilter
