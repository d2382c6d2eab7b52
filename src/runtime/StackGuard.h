// Keeps recursion over nested values from exhausting the stack.
#pragma once

#include <cstdint>

#include "runtime/Export.h"

namespace commandfilter {

class COMMANDFILTER_EXPORT StackGuard {
 public:
  /// Throws when less than a reserve is left of the calling thread's stack; every function that
  /// recurses over data calls it. What is measured is the stack itself, not a count of calls.
  /// @throws Exception "nested too deeply".
  static void check() {
    const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    if (here < lowest_) [[unlikely]]
      checkAgainstLimit(here);
  }

 private:
  static void checkAgainstLimit(std::uintptr_t address);

  /// The lowest address that the thread may use; above all addresses until it has been found out.
  /// The storage model saves a call at every check: the library is loaded when a program starts.
  [[gnu::tls_model("initial-exec")]] static constinit thread_local std::uintptr_t lowest_;
};

}  // namespace commandfilter
