#include "PPDText.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace commandfilter::tools {

namespace {

constexpr std::string_view kBlanks = " \t";

// What stands in front of a colon, up to an option.
std::string_view keywordOf(std::string_view line) {
  return line.substr(1, line.find_first_of(" \t:") - 1);
}

}  // namespace

PPDText::PPDText(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = std::min(bytes.find_first_of("\r\n"), bytes.size());
    std::size_t end = length == bytes.size() ? 0 : 1;
    if (bytes.substr(length).starts_with("\r\n")) end = 2;
    lines_.push_back(
        {std::string(bytes.substr(0, length)), std::string(bytes.substr(length, end))});
    bytes.remove_prefix(length + end);
  }
}

std::string PPDText::bytes() const {
  std::string bytes;
  for (const PPDLine& line : lines_) bytes.append(line.text).append(line.end);
  return bytes;
}

std::vector<PPDStatement> PPDText::statements() const {
  std::vector<PPDStatement> statements;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const std::string_view line = lines_[i].text;
    if (!line.starts_with('*') || line.starts_with("*%")) continue;
    PPDStatement statement{std::string(keywordOf(line)), {}, i, i + 1};
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) continue;
    std::string_view value = line.substr(colon + 1);
    value.remove_prefix(std::min(value.find_first_not_of(kBlanks), value.size()));
    if (value.starts_with('"')) {
      value.remove_prefix(1);
      std::size_t quote = value.find('"');
      const bool isLong = quote == std::string_view::npos;
      statement.value = value.substr(0, quote);
      while (quote == std::string_view::npos && statement.behind < lines_.size()) {
        value = lines_[statement.behind++].text;
        quote = value.find('"');
        statement.value.append("\n").append(value.substr(0, quote));
      }
      if (isLong && statement.behind < lines_.size() && lines_[statement.behind].text == "*End") {
        ++statement.behind;
      }
    } else {
      statement.value = value;
    }
    i = statement.behind - 1;
    statements.push_back(std::move(statement));
  }
  return statements;
}

void PPDText::insert(std::size_t before, const std::vector<std::string>& texts) {
  // A last line may lack its end, and then says nothing of how lines end.
  std::string end = lines_[before > 0 ? before - 1 : 0].end;
  if (end.empty()) end = lines_.front().end.empty() ? "\n" : lines_.front().end;
  std::vector<PPDLine> added;
  added.reserve(texts.size());
  for (const std::string& text : texts) added.push_back({text, end});
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(before),
                std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()));
}

void PPDText::erase(std::size_t first, std::size_t behind) {
  lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(first),
               lines_.begin() + static_cast<std::ptrdiff_t>(behind));
}

}  // namespace commandfilter::tools
