// A place in a file.
#pragma once

#include <cstddef>

namespace commandfilter::tools {

/// Bytes of a file, from `begin` up to, not including, `end`.
struct ByteRange {
  std::size_t begin = 0;
  std::size_t end = 0;
};

}  // namespace commandfilter::tools
