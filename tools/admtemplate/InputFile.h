// Property lists that the user names.
#pragma once

#include <string>
#include <string_view>

#include "runtime/Dictionary.h"
#include "runtime/Ref.h"

namespace commandfilter::tools {

/// The dictionary in a property-list file. `what` says what the file is for.
/// @throws UsageError when the file cannot be read or holds something else.
[[nodiscard]] Ref<Dictionary> readDictionary(const std::string& path, std::string_view what);

}  // namespace commandfilter::tools
