#include "runtime/PropertyList.h"

#include <algorithm>

#include "runtime/BinaryPropertyList.h"
#include "runtime/File.h"
#include "runtime/PlainPropertyList.h"
#include "runtime/UTF8.h"
#include "runtime/XMLPropertyList.h"

namespace commandfilter {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// What is not even meant to be XML has no line to complain about. This includes text of 16-bit
// units, which the parser would read as well.
bool beginsLikeXML(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  return text.starts_with('<') && !text.starts_with(std::string_view("<\0", 2));
}

}  // namespace

Result<Value> parsePropertyList(std::string_view bytes, PropertyListObserver* observer) {
  if (bytes.size() > kPropertyListBytes) return Failure{"it is too large"};
  if (bytes.starts_with(detail::kBinaryMagic)) return detail::parseBinaryPropertyList(bytes);
  if (!beginsLikeXML(bytes)) {
    return Failure{isUTF8(bytes) ? "it is no property list, neither XML nor binary"
                                 : "it is neither UTF-8 text nor a binary list"};
  }
  if (observer == nullptr) {
    if (auto value = detail::readPlainPropertyList(bytes)) return *std::move(value);
  }
  Result<Value> value = detail::parseXMLPropertyList(bytes, observer);
  if (!value && !isUTF8(bytes)) return Failure{value.reason() + "; it is not UTF-8 text"};
  return value;
}

Result<Value> readPropertyList(const std::string& path) {
  Result<std::string> bytes = readRegularFile(path, kPropertyListBytes);
  if (!bytes) return Failure{bytes.reason()};
  return parsePropertyList(*bytes);
}

}  // namespace commandfilter
