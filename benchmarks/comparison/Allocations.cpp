#include "comparison/Allocations.h"

#include <cstddef>

using commandfilter::benchmarks::Allocations;

// The functions of the C library under their other names.
extern "C" void* __libc_malloc(std::size_t size);                     // NOLINT
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);  // NOLINT

// What a library allocates arrives here too, whether it has a C++ run-time library of its own or
// not: the program's definitions come before those of the C library. Lua's allocator, which calls
// realloc, reports by itself.
extern "C" void* malloc(std::size_t size) {
  Allocations::note();
  return __libc_malloc(size);
}

extern "C" void* calloc(std::size_t count, std::size_t size) {
  Allocations::note();
  return __libc_calloc(count, size);
}
