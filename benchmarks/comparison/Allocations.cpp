#include "comparison/Allocations.h"

#include <cstdlib>
#include <new>

using commandfilter::benchmarks::Allocations;

// The forms for arrays, and those that do not throw, end in these. What the library allocates
// arrives here too: the program's definitions come before those of the run-time library.
void* operator new(std::size_t size) {
  Allocations::note();
  if (void* memory = std::malloc(size != 0 ? size : 1)) return memory;
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
