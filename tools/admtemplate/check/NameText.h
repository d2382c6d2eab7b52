// Names in messages.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace commandfilter::tools {

/// The text on one line and not longer than a line: control characters become question marks, and
/// the rest of a long text becomes three full stops. The text is UTF-8.
[[nodiscard]] std::string shownName(std::string_view name);

/// The text with control characters but tabs as question marks; as many characters as before.
[[nodiscard]] std::string withoutControls(std::string_view text);

/// What stands between the two texts; none when the name does not begin and end so.
[[nodiscard]] std::optional<std::string_view> textBetween(std::string_view name,
                                                          std::string_view before,
                                                          std::string_view behind);

}  // namespace commandfilter::tools
