// Names of colorants.
#pragma once

#include <string>
#include <string_view>

namespace commandfilter {

/// The colour of a name as printers write it, in any case, as `#RRGGBB`; empty for a name that is
/// not known.
[[nodiscard]] std::string rgbOfColorName(std::string_view name);
/// The name of a colour `#RRGGBB`; empty for one that is not known.
[[nodiscard]] std::string colorNameOfRGB(std::string_view rgb);

}  // namespace commandfilter
