#include "UnitPlace.h"

#include <algorithm>

#include "runtime/UTF8.h"

namespace commandfilter::tools {

std::size_t byteOfUnit(std::string_view text, std::size_t unit) {
  if (unit <= text.size() && isASCII(text.substr(0, unit))) return unit;
  std::size_t offset = 0;
  for (std::size_t units = 0; offset < text.size();) {
    std::size_t next = offset;
    units += nextCodePoint(text, next) < 0x10000 ? 1U : 2U;
    if (units > unit) break;
    offset = next;
  }
  return offset;
}

std::size_t charactersOf(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(
      text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

}  // namespace commandfilter::tools
