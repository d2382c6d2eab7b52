// Contexts that walk over a list.
#pragma once

#include "runtime/Array.h"
#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Value.h"

namespace commandfilter {

/// A context that evaluates one element of a list after another. Test `endOfIteration` before
/// every element.
class COMMANDFILTER_EXPORT ADMArrayIteration : public ProtocolBase {
 public:
  static const Protocol kProtocol;

  /// Goes to the next element; true when there is one.
  virtual bool iterateNext() = 0;
  /// True when the current position is behind the last element.
  [[nodiscard]] virtual bool endOfIteration() const = 0;
  /// Starts again at the first element; of the given list unless it is nil.
  virtual void resetIteration(const Value& list) = 0;

 protected:
  ~ADMArrayIteration() = default;
};

}  // namespace commandfilter
