// The scheme of a URI.
#pragma once

#include <optional>
#include <string_view>

namespace commandfilter {

/// The scheme of the URI, with the case as written, borrowed from it; none when it has no scheme or
/// holds a character that no URI may hold.
[[nodiscard]] std::optional<std::string_view> schemeOfURI(std::string_view uri) noexcept;

}  // namespace commandfilter
