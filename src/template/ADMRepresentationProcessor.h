// What turns a description of a value into the value.
#pragma once

#include "evaluation/protocol/ADMEvaluationError.h"
#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Computes one value of a template as often as it is asked.
class COMMANDFILTER_EXPORT ADMRepresentationProcessor : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// The value, computed anew; nil when there is none. May wait for the device.
  /// @throws Exception whatever services and plug-ins raise.
  virtual Value representationData() = 0;
  /// Forgets what procedures have kept for the last computation; called before each.
  virtual void resetEvaluations() = 0;
  /// The error recorded last by any computation so far, also when later ones succeeded; nil when
  /// there was none. Borrowed.
  [[nodiscard]] virtual ADMEvaluationError* lastError() const = 0;

 protected:
  ~ADMRepresentationProcessor() = default;
};

}  // namespace commandfilter
