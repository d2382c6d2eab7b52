// How much is much, for tests of what is large or deep.
#pragma once

#include <cstddef>

namespace commandfilter::testing {

inline constexpr std::size_t kMillion = 1'000'000;
inline constexpr std::size_t kHundredThousand = 100'000;

}  // namespace commandfilter::testing
