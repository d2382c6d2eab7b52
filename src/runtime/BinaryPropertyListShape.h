// Looks at the shape of a binary property list before a recursive parser meets it.
#pragma once

#include <string>
#include <string_view>

namespace commandfilter::detail {

/// Empty when a binary property list stays within the limits, although its objects may be shared or
/// refer to themselves; otherwise the reason why it does not.
[[nodiscard]] std::string objectionToBinaryShape(std::string_view bytes);

}  // namespace commandfilter::detail
