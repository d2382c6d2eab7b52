#include "DataText.h"

#include <string_view>

namespace commandfilter::benchmarks {

namespace {

std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '&') {
      result.append("&amp;");
    } else if (c == '<') {
      result.append("&lt;");
    } else {
      result.push_back(c);
    }
  }
  return result;
}

void appendElement(std::string& text, const Datum& datum, std::size_t level) {
  const std::string indent(level, '\t');
  if (const auto* string = std::get_if<std::string>(&datum.content)) {
    text.append(indent + "<string>" + escaped(*string) + "</string>\n");
  } else if (const auto* integer = std::get_if<std::int64_t>(&datum.content)) {
    text.append(indent + "<integer>" + std::to_string(*integer) + "</integer>\n");
  } else if (const auto* list = std::get_if<Datum::List>(&datum.content)) {
    text.append(indent + "<array>\n");
    for (const Datum& element : *list) appendElement(text, element, level + 1);
    text.append(indent + "</array>\n");
  } else if (const auto* map = std::get_if<Datum::Map>(&datum.content)) {
    text.append(indent + "<dict>\n");
    for (const auto& [key, value] : *map) {
      text.append(indent + "\t<key>" + escaped(std::get<std::string>(key.content)) + "</key>\n");
      appendElement(text, value, level + 1);
    }
    text.append(indent + "</dict>\n");
  }
}

}  // namespace

std::string propertyListOf(const Datum& datum) {
  std::string text = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0">
)";
  appendElement(text, datum, 0);
  return text + "</plist>\n";
}

std::string luaOf(const Datum& datum) {
  if (const auto* string = std::get_if<std::string>(&datum.content))
    return std::string("\"").append(*string).append("\"");
  if (const auto* integer = std::get_if<std::int64_t>(&datum.content)) {
    return std::to_string(*integer);
  }
  std::string text = "{";
  if (const auto* list = std::get_if<Datum::List>(&datum.content)) {
    for (const Datum& element : *list) text.append(luaOf(element) + ", ");
  } else if (const auto* map = std::get_if<Datum::Map>(&datum.content)) {
    for (const auto& [key, value] : *map) {
      text.append("[" + luaOf(key) + "] = " + luaOf(value) + ", ");
    }
  }
  return text + "}";
}

}  // namespace commandfilter::benchmarks
