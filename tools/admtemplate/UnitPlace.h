// Places in a text by 16-bit units and by bytes.
#pragma once

#include <cstddef>
#include <string_view>

namespace commandfilter::tools {

/// The byte at which the character of a 16-bit unit of UTF-8 text stands; the size of the text when
/// the unit is behind it.
[[nodiscard]] std::size_t byteOfUnit(std::string_view text, std::size_t unit);

/// How many characters there are in UTF-8 text.
[[nodiscard]] std::size_t charactersOf(std::string_view text);

}  // namespace commandfilter::tools
