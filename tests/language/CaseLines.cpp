#include "language/CaseLines.h"

#include <algorithm>

#include "language/CaseText.h"

namespace commandfilter::testing {

std::string_view takeLine(std::string_view& text) noexcept {
  const std::size_t end = std::min(text.find('\n'), text.size());
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return line;
}

std::vector<CaseLine> linesOf(std::string_view text) {
  std::vector<CaseLine> lines;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::string_view line = takeLine(text);
    const std::string_view content = stripped(line);
    if (content.empty() || content.front() == '#') continue;
    lines.push_back({number, content.data() != line.data(), std::string(content)});
  }
  return lines;
}

FirstWord firstWordOf(std::string_view text) noexcept {
  const std::size_t end = std::min(text.find_first_of(" \t"), text.size());
  return {text.substr(0, end), stripped(text.substr(end))};
}

}  // namespace commandfilter::testing
