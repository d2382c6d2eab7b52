#include "comparison/Datum.h"

#include <algorithm>

namespace commandfilter::benchmarks {

namespace {

constexpr std::size_t kLongest = 400;

void append(std::string& text, const Datum& datum) {
  if (text.size() > kLongest) return;
  if (const auto* string = std::get_if<std::string>(&datum.content)) {
    text.append("\"").append(*string).append("\"");
  } else if (const auto* integer = std::get_if<std::int64_t>(&datum.content)) {
    text.append(std::to_string(*integer));
  } else if (const auto* list = std::get_if<Datum::List>(&datum.content)) {
    text.append("[");
    for (const Datum& element : *list) {
      append(text, element);
      text.append(" ");
    }
    text.append("]");
  } else if (const auto* map = std::get_if<Datum::Map>(&datum.content)) {
    text.append("{");
    for (const auto& [key, value] : *map) {
      append(text, key);
      text.append("=");
      append(text, value);
      text.append(" ");
    }
    text.append("}");
  } else {
    text.append("nil");
  }
}

}  // namespace

void Datum::sortKeys() {
  if (auto* list = std::get_if<List>(&content)) {
    for (Datum& element : *list) element.sortKeys();
  } else if (auto* map = std::get_if<Map>(&content)) {
    for (auto& entry : *map) entry.second.sortKeys();
    std::ranges::sort(*map, {}, [](const auto& entry) { return describe(entry.first); });
  }
}

std::string describe(const Datum& datum) {
  std::string text;
  append(text, datum);
  if (text.size() > kLongest) {
    text.resize(kLongest);
    text.append("...");
  }
  return text;
}

}  // namespace commandfilter::benchmarks
