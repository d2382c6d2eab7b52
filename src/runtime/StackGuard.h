// Keeps recursion over nested values from exhausting the stack.
#pragma once

#include "runtime/Export.h"

namespace commandfilter {

class COMMANDFILTER_EXPORT StackGuard {
 public:
  /// Throws when less than a reserve is left of the calling thread's stack; every function that
  /// recurses over data calls it. What is measured is the stack itself, not a count of calls.
  /// @throws Exception "nested too deeply".
  static void check();
};

}  // namespace commandfilter
