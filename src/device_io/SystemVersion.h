// The operating system's version as a number.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "runtime/Bundle.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter {

/// The number of a version that cannot be read.
inline constexpr int kDefaultSystemVersion = 0x1060;

/// The version "10.6.2" as 0x1062: its digits read as hexadecimal. A version without a third
/// component gets a 0, one with two digits there a 9; none for versions of other lengths and for
/// those that give 0.
[[nodiscard]] std::optional<int> systemVersionNumber(std::string_view version);

/// The folder of the operating system's version record: the one that the bundle's information
/// property list names under "SystemVersionFolder" (absolute, below the home folder with a leading
/// tilde, or inside the bundle), otherwise the bundle's folder for resources.
[[nodiscard]] std::string systemVersionFolder(Bundle& bundle);

/// The "ProductVersion" of the property list "SystemVersion.plist" in that folder; nil when there
/// is no such file, or no string in it.
[[nodiscard]] RefPtr<String> systemVersionString(Bundle& bundle);

}  // namespace commandfilter
