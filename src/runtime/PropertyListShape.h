// Looks at the shape of a property list before a recursive parser meets it.
#pragma once

#include <string>
#include <string_view>

namespace commandfilter::detail {

/// Empty when an XML property list stays within the limits; otherwise the reason why it does not.
/// Also objects to markup that can be read in more than one way, since the parser could then find
/// more nesting than was seen here.
[[nodiscard]] std::string objectionToXMLShape(std::string_view text);
/// The same for a binary property list, whose objects may be shared or refer to themselves.
[[nodiscard]] std::string objectionToBinaryShape(std::string_view bytes);

/// The XML property list with empty comments inside its texts, so that no part of a text has many
/// character references: the parser's time grows with their square. Empty when none is needed.
[[nodiscard]] std::string withDividedTexts(std::string_view text);

}  // namespace commandfilter::detail
