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
    const std::uintptr_t here = stackPointer();
    if (here < lowest_) [[unlikely]]
      checkAgainstLimit(here);
  }

 private:
  // The register itself where it can be read: asking for the frame would make every function that
  // checks set one up.
  [[nodiscard]] [[gnu::always_inline]] static std::uintptr_t stackPointer() noexcept {
#if defined(__x86_64__)
    std::uintptr_t pointer;
    asm("mov %%rsp, %0" : "=r"(pointer));
    return pointer;
#elif defined(__aarch64__)
    std::uintptr_t pointer;
    asm("mov %0, sp" : "=r"(pointer));
    return pointer;
#else
    return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
#endif
  }
  static void checkAgainstLimit(std::uintptr_t address);

  /// The lowest address that the thread may use; above all addresses until it has been found out.
  /// The storage model saves a call at every check: the library is loaded when a program starts.
  [[gnu::tls_model("initial-exec")]] static constinit thread_local std::uintptr_t lowest_;
};

}  // namespace commandfilter
