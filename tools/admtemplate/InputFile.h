// Property lists that the user names.
#pragma once

#include <string>
#include <string_view>

#include "runtime/Dictionary.h"
#include "runtime/Ref.h"

namespace commandfilter::tools {

/// A property list that holds a dictionary, as it stands in its file.
struct InputFile {
  std::string path;
  std::string bytes;
  Ref<Dictionary> dictionary;
};

/// Reads a property-list file. `what` says what the file is for.
/// @throws UsageError when the file cannot be read or holds something else; with the place when it
/// is broken XML.
[[nodiscard]] InputFile openInputFile(const std::string& path, std::string_view what);

/// The reason why a file is no property list, with what is to be done when it is broken XML, or
/// text that is not in UTF-8.
[[nodiscard]] std::string withRemedy(const std::string& reason);

/// The dictionary alone.
/// @throws UsageError as `openInputFile` does.
[[nodiscard]] Ref<Dictionary> readDictionary(const std::string& path, std::string_view what);

}  // namespace commandfilter::tools
