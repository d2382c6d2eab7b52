// How wide a terminal shows a text.
#pragma once

#include <cstddef>
#include <string_view>

namespace commandfilter::tools {

/// How many columns UTF-8 text takes: two for a wide character such as those of Chinese and
/// Japanese, none for an accent that stands on the character before, one for any other, tabs and
/// control characters among them.
[[nodiscard]] std::size_t terminalColumns(std::string_view text);

}  // namespace commandfilter::tools
