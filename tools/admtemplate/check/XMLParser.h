// The XML library.
#pragma once

#include <expat.h>

#include <memory>
#include <string_view>
#include <type_traits>

namespace commandfilter::tools {

struct FreeXMLParser {
  void operator()(XML_Parser parser) const noexcept { XML_ParserFree(parser); }
};
using XMLParser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeXMLParser>;

/// A parser for UTF-8, whatever the file says; property lists are read so.
[[nodiscard]] inline XMLParser newXMLParser() { return XMLParser(XML_ParserCreate("UTF-8")); }

/// Parses everything. The bytes are no more than a property list's.
[[nodiscard]] inline bool parseXML(const XMLParser& parser, std::string_view bytes) {
  return XML_Parse(parser.get(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE) ==
         XML_STATUS_OK;
}

}  // namespace commandfilter::tools
