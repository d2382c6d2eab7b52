#pragma once

#include <cstdint>

namespace commandfilter::benchmarks {

// Counts what is allocated: the program's malloc is replaced, and Lua's allocator reports.
class Allocations {
 public:
  static void note() noexcept { ++count_; }
  static std::uint64_t count() noexcept { return count_; }

 private:
  inline static std::uint64_t count_ = 0;
};

}  // namespace commandfilter::benchmarks
