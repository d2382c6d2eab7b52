#include "runtime/PropertyList.h"

#include "runtime/BinaryPropertyList.h"
#include "runtime/File.h"
#include "runtime/UTF8.h"
#include "runtime/XMLPropertyList.h"

namespace commandfilter {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// What is not even meant to be XML has no line to complain about.
bool beginsLikeXML(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && text[first] == '<';
}

}  // namespace

Result<Value> parsePropertyList(std::string_view bytes) {
  if (bytes.size() > kPropertyListBytes) return Failure{"it is too large"};
  if (bytes.starts_with(detail::kBinaryMagic)) return detail::parseBinaryPropertyList(bytes);
  if (!isUTF8(bytes)) return Failure{"it is neither UTF-8 text nor a binary list"};
  if (!beginsLikeXML(bytes)) return Failure{"it is no property list, neither XML nor binary"};
  return detail::parseXMLPropertyList(bytes);
}

Result<Value> readPropertyList(const std::string& path) {
  Result<std::string> bytes = readRegularFile(path, kPropertyListBytes);
  if (!bytes) return Failure{bytes.reason()};
  return parsePropertyList(*bytes);
}

}  // namespace commandfilter
