// Names in messages.
#pragma once

#include <string>
#include <string_view>

namespace commandfilter::tools {

/// The text on one line and not longer than a line: control characters become question marks, and
/// the rest of a long text becomes three full stops. The text is UTF-8.
[[nodiscard]] std::string shownName(std::string_view name);

/// The text with control characters but tabs as question marks; as many characters as before.
[[nodiscard]] std::string withoutControls(std::string_view text);

}  // namespace commandfilter::tools
