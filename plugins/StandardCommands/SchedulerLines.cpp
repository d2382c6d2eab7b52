#include "SchedulerLines.h"

#include <runtime/Text.h>
#include <runtime/UTF8.h>

#include <algorithm>

namespace commandfilter::standard {

namespace {

bool isLetterOrDigit(char c) noexcept {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// Control characters, C1 ones too, and those that end a line in Unicode.
bool isControl(char32_t c) noexcept { return c < U' ' || (c >= 0x7F && c < 0xA0) || isNewline(c); }

// Marks each of these characters with a backslash.
std::string escaped(std::string_view text, std::string_view marked) {
  std::string result;
  for (const char c : text) {
    if (marked.find(c) != std::string_view::npos) result.push_back('\\');
    result.push_back(c);
  }
  return result;
}

}  // namespace

std::string singleLine(std::string_view text) {
  const std::string wellFormed = toWellFormedUTF8(text);
  std::string line;
  for (std::size_t at = 0; at < wellFormed.size();) {
    const std::size_t start = at;
    const char32_t c = nextCodePoint(wellFormed, at);
    if (isControl(c) || c == U' ') {
      if (!line.empty() && line.back() != ' ') line.push_back(' ');
    } else {
      line.append(wellFormed, start, at - start);
    }
  }
  return std::string(trimmed(line));
}

std::string_view beginning(std::string_view text, std::size_t bytes) noexcept {
  if (text.size() <= bytes) return text;
  constexpr unsigned kFollowing = 0xC0U;
  const auto isInside = [&text](std::size_t at) {
    return (static_cast<unsigned char>(text[at]) & kFollowing) == 0x80U;
  };
  while (bytes > 0 && isInside(bytes)) --bytes;
  return trimmed(text.substr(0, bytes));
}

std::string assignment(std::string_view name, const std::vector<std::string>& values) {
  std::string list;
  for (const std::string& value : values) {
    if (&value != values.data()) list.push_back(',');
    list.append(escaped(value, "\\\"',"));
  }
  std::string text(name);
  text.push_back('=');
  const bool plain = std::ranges::all_of(list, [](char c) {
    return isLetterOrDigit(c) || std::string_view(",#-._").find(c) != std::string_view::npos;
  });
  if (plain) return text.append(list);
  return text.append("'").append(escaped(list, "\\'")).append("'");
}

bool isKeyword(std::string_view text) noexcept {
  return !text.empty() && std::ranges::all_of(text, [](char c) {
    return isLetterOrDigit(c) || c == '-' || c == '.' || c == '_';
  });
}

bool isPPDWord(std::string_view text) noexcept {
  return !text.empty() && std::ranges::all_of(text, [](char c) {
    return c > ' ' && c < '\x7F' &&
           std::string_view("/:\"',\\{}=").find(c) == std::string_view::npos;
  });
}

std::vector<std::string> linesOf(std::string_view prefix, char separator,
                                 const std::vector<std::string>& items) {
  std::vector<std::string> lines;
  for (const std::string& item : items) {
    if (prefix.size() + item.size() > kLongestLine) continue;
    if (lines.empty() || lines.back().size() + 1 + item.size() > kLongestLine) {
      lines.emplace_back(prefix).append(item);
    } else {
      lines.back().append(1, separator).append(item);
    }
  }
  return lines;
}

std::string messageLine(std::string_view text) {
  constexpr std::string_view kMore = "...";
  std::string line = singleLine(text);
  if (line.size() <= kLongestLine) return line;
  return std::string(beginning(line, kLongestLine - kMore.size())).append(kMore);
}

}  // namespace commandfilter::standard
