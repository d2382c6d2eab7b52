// How large values may become.
#pragma once

#include <cstddef>

#include "runtime/Export.h"

namespace commandfilter {

/// No text is put together that has more bytes than this, and no array that has more elements: an
/// expression that doubles its result a few dozen times would take all memory, and the process with
/// it.
inline constexpr std::size_t kLargestText = std::size_t{256} * 1024 * 1024;
inline constexpr std::size_t kLargestArray = std::size_t{8} * 1024 * 1024;

namespace detail {

[[noreturn]] COMMANDFILTER_EXPORT void throwTooLarge();

}  // namespace detail

/// @throws Exception "a value is too large" for a text that would be larger than it may be.
inline void checkTextSize(std::size_t bytes) {
  if (bytes > kLargestText) [[unlikely]]
    detail::throwTooLarge();
}
/// @throws Exception "a value is too large" for an array that would be larger than it may be.
inline void checkArraySize(std::size_t elements) {
  if (elements > kLargestArray) [[unlikely]]
    detail::throwTooLarge();
}

}  // namespace commandfilter
