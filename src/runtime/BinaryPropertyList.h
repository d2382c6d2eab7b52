// Binary property lists.
#pragma once

#include <string_view>

#include "runtime/Result.h"
#include "runtime/Value.h"

namespace commandfilter::detail {

/// What a binary property list begins with.
inline constexpr std::string_view kBinaryMagic = "bplist00";

/// Reads a binary property list. Loads the library that does, since hardly any list is binary.
[[nodiscard]] Result<Value> parseBinaryPropertyList(std::string_view bytes);

}  // namespace commandfilter::detail
