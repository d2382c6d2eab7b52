#include "check/FileLines.h"

#include <algorithm>

#include "SourceExcerpt.h"
#include "UnitPlace.h"
#include "check/NameText.h"
#include "runtime/UTF8.h"

namespace commandfilter::tools {

namespace {

constexpr bool continuesCharacter(char c) noexcept {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

}  // namespace

FileLines::FileLines(std::string_view text) : text_(text), begins_{0} {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isLineEnd =
        text[i] == '\n' || (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n'));
    if (isLineEnd) begins_.push_back(i + 1);
  }
}

std::size_t FileLines::lineOf(std::size_t byte) const {
  const auto behind = std::ranges::upper_bound(begins_, byte);
  return static_cast<std::size_t>(behind - begins_.begin()) - 1;
}

LineAndColumn FileLines::placeOf(std::size_t byte) {
  const std::size_t line = lineOf(byte);
  if (line + 1 != last_.line || byte < lastByte_) {
    lastByte_ = begins_[line];
    last_ = {line + 1, 1};
  }
  last_.column += charactersOf(text_.substr(lastByte_, byte - lastByte_));
  lastByte_ = byte;
  return last_;
}

std::string FileLines::excerpt(const ByteRange& range, std::string_view indent) const {
  const std::size_t place = lineOf(range.begin);
  const std::size_t begin = begins_[place];
  std::size_t end = place + 1 < begins_.size() ? begins_[place + 1] : text_.size();
  while (end > range.begin && (text_[end - 1] == '\n' || text_[end - 1] == '\r')) --end;
  const std::string_view line = text_.substr(begin, end - begin);
  return lineExcerpt(line, {range.begin - begin, range.end - begin}, indent);
}

std::string lineExcerpt(std::string_view line, ByteRange range, std::string_view indent) {
  constexpr std::size_t kBefore = 60;
  constexpr std::size_t kBehind = 100;
  constexpr std::string_view kLeftOut = "...";
  range.end = std::clamp(range.end, range.begin, line.size());
  std::size_t begin = std::min(line.find_first_not_of(" \t"), range.begin);
  std::size_t end = line.size();
  const bool cutBefore = range.begin - begin > kBefore;
  const bool cutBehind = end - range.begin > kBehind;
  if (cutBefore) begin = range.begin - kBefore;
  if (cutBehind) end = range.begin + kBehind;
  while (begin < range.begin && continuesCharacter(line[begin])) ++begin;
  while (end < line.size() && continuesCharacter(line[end])) ++end;
  const std::string lead = (cutBefore ? std::string(kLeftOut) : std::string()) +
                           withoutControls(line.substr(begin, range.begin - begin));
  const std::size_t markedEnd = std::min(range.end, end);
  const std::string marked = withoutControls(line.substr(range.begin, markedEnd - range.begin));
  const std::string rest = withoutControls(line.substr(markedEnd, end - markedEnd)) +
                           (cutBehind ? std::string(kLeftOut) : std::string());
  const std::size_t units = lengthInCodeUnits(lead);
  return sourceExcerpt(lead + marked + rest, {units, units + lengthInCodeUnits(marked)}, indent);
}

}  // namespace commandfilter::tools
