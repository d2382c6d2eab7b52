#include "SourceExcerpt.h"

#include <algorithm>
#include <cstddef>

#include "runtime/UTF8.h"

namespace commandfilter::tools {

namespace {

// The byte at which the unit stands; the size of the text when it is behind it.
std::size_t byteOfUnit(std::string_view text, std::size_t unit) {
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

}  // namespace

std::string sourceExcerpt(std::string_view expression, const SourceRange& range,
                          std::string_view indent) {
  const std::size_t begin = byteOfUnit(expression, range.begin);
  const std::size_t end = std::max(begin, byteOfUnit(expression, range.end));
  const std::size_t before =
      begin == 0 ? std::string_view::npos : expression.find_last_of("\r\n", begin - 1);
  const std::size_t lineBegin = before == std::string_view::npos ? 0 : before + 1;
  const std::size_t lineEnd = std::min(expression.find_first_of("\r\n", begin), expression.size());
  const std::string_view line = expression.substr(lineBegin, lineEnd - lineBegin);
  std::string excerpt(indent);
  excerpt.append(line).append("\n").append(indent);
  // Tabs stay, so that the caret stands below its place whatever they mean.
  const std::string_view lead = line.substr(0, begin - lineBegin);
  for (std::size_t i = 0; i < lead.size(); ++i) {
    const auto byte = static_cast<unsigned char>(lead[i]);
    if ((byte & 0xC0U) != 0x80U) excerpt.push_back(byte == '\t' ? '\t' : ' ');
  }
  const std::string_view marked = expression.substr(begin, std::min(end, lineEnd) - begin);
  excerpt.append(std::max<std::size_t>(charactersOf(marked), 1), '^').append("\n");
  return excerpt;
}

}  // namespace commandfilter::tools
