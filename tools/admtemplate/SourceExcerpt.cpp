#include "SourceExcerpt.h"

#include <algorithm>
#include <cstddef>

#include "TerminalColumns.h"
#include "UnitPlace.h"

namespace commandfilter::tools {

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
  std::string_view lead = line.substr(0, begin - lineBegin);
  for (std::size_t tab = lead.find('\t'); tab != std::string_view::npos; tab = lead.find('\t')) {
    excerpt.append(terminalColumns(lead.substr(0, tab)), ' ').append("\t");
    lead.remove_prefix(tab + 1);
  }
  excerpt.append(terminalColumns(lead), ' ');
  const std::string_view marked = expression.substr(begin, std::min(end, lineEnd) - begin);
  excerpt.append(std::max<std::size_t>(terminalColumns(marked), 1), '^').append("\n");
  return excerpt;
}

}  // namespace commandfilter::tools
