// Property lists, XML and binary.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "runtime/Export.h"
#include "runtime/PropertyListObserver.h"
#include "runtime/Result.h"
#include "runtime/Value.h"

namespace commandfilter {

/// What a property list may hold at most: bytes of its file, collections inside each other, and
/// values. Where a binary list shares parts, bytes and values count once they are written out.
inline constexpr std::size_t kPropertyListBytes = std::size_t{512} * 1024 * 1024;
inline constexpr int kPropertyListDepth = 512;
inline constexpr std::size_t kPropertyListValues = 4'000'000;

/// Reads a property list from a regular file.
[[nodiscard]] COMMANDFILTER_EXPORT Result<Value> readPropertyList(const std::string& path);

/// Reads a property list: dictionaries in the order of the file, arrays, strings, numbers
/// (integers of encoding "q", or "Q" above the signed range; reals "d"; booleans "c"), dates and
/// data. Fails, with the reason, for everything that is not one, and for text that is not UTF-8.
/// XML has to be well-formed and must not declare anything; what refuses it has its line and
/// column. The observer, if any, follows the reading.
[[nodiscard]] COMMANDFILTER_EXPORT Result<Value> parsePropertyList(
    std::string_view bytes, PropertyListObserver* observer = nullptr);

}  // namespace commandfilter
