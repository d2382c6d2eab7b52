// Looks at the nesting of a property list before a recursive parser meets it.
#pragma once

#include <string>
#include <string_view>

namespace commandfilter::detail {

/// Empty when the nesting of an XML property list stays within the limits; otherwise the reason
/// why it does not.
[[nodiscard]] std::string objectionToXMLShape(std::string_view text);
/// The same for a binary property list, whose objects may be shared or refer to themselves.
[[nodiscard]] std::string objectionToBinaryShape(std::string_view bytes);

}  // namespace commandfilter::detail
