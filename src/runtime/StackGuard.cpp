#include "runtime/StackGuard.h"

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>

#include "runtime/Exception.h"

// Set by the dynamic loader to the end of the main thread's stack.
extern "C" void* __libc_stack_end;  // NOLINT: glibc's name

namespace commandfilter {

namespace {

// Enough for the deepest call that does not recurse, a plug-in's own calls included.
constexpr std::size_t kReserve = std::size_t{256} * 1024;
// An unlimited stack is treated as one of this size: memory is not unlimited.
constexpr std::size_t kLargestStack = std::size_t{64} * 1024 * 1024;

std::uintptr_t lowestUsableAddress() noexcept {
  if (getpid() == gettid()) {
    rlimit limit{};
    std::size_t size = std::size_t{8} * 1024 * 1024;
    if (getrlimit(RLIMIT_STACK, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY) {
      size = limit.rlim_cur;
    } else {
      size = kLargestStack;
    }
    if (size > kLargestStack) size = kLargestStack;
    return reinterpret_cast<std::uintptr_t>(__libc_stack_end) - size + kReserve;
  }
  pthread_attr_t attributes;
  if (pthread_getattr_np(pthread_self(), &attributes) != 0) return 0;
  void* lowest = nullptr;
  std::size_t size = 0;
  pthread_attr_getstack(&attributes, &lowest, &size);
  pthread_attr_destroy(&attributes);
  return reinterpret_cast<std::uintptr_t>(lowest) + kReserve;
}

}  // namespace

void StackGuard::check() {
  thread_local const std::uintptr_t lowest = lowestUsableAddress();
  if (reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) < lowest) {
    throw Exception("nested too deeply");
  }
}

}  // namespace commandfilter
