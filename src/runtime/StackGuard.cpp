#include "runtime/StackGuard.h"

#include <pthread.h>
#include <sys/auxv.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "runtime/Exception.h"

namespace commandfilter {

namespace {

// Enough for the deepest call that does not recurse, a plug-in's own calls included. A small stack
// keeps half of it.
constexpr std::size_t kReserve = std::size_t{256} * 1024;
// An unlimited stack is treated as one of this size: memory is not unlimited.
constexpr std::size_t kLargestStack = std::size_t{64} * 1024 * 1024;

std::uintptr_t lowestUsableAddress() noexcept {
  const auto reserveOf = [](std::size_t size) { return std::min(kReserve, size / 2); };
  // The program's name is the uppermost of the texts, arguments and environment, that the kernel
  // puts on the main thread's stack and counts as part of it.
  const std::uintptr_t top = getauxval(AT_EXECFN);
  if (getpid() == gettid() && top != 0) {
    rlimit limit{};
    std::size_t size = kLargestStack;
    if (getrlimit(RLIMIT_STACK, &limit) == 0) {
      size = static_cast<std::size_t>(std::min<rlim_t>(limit.rlim_cur, kLargestStack));
    }
    return top - size + reserveOf(size);
  }
  pthread_attr_t attributes;
  if (pthread_getattr_np(pthread_self(), &attributes) != 0) return 0;
  void* lowest = nullptr;
  std::size_t size = 0;
  pthread_attr_getstack(&attributes, &lowest, &size);
  pthread_attr_destroy(&attributes);
  return reinterpret_cast<std::uintptr_t>(lowest) + reserveOf(size);
}

}  // namespace

constinit thread_local std::uintptr_t StackGuard::lowest_ = UINTPTR_MAX;

void StackGuard::checkAgainstLimit(std::uintptr_t address) {
  if (lowest_ == UINTPTR_MAX) lowest_ = lowestUsableAddress();
  if (address < lowest_) throw Exception("nested too deeply");
}

}  // namespace commandfilter
