#include "language/CaseText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>

#include "runtime/UTF8.h"

namespace commandfilter::testing {

namespace {

constexpr std::string_view kBlanks = " \t";

bool isPunctuation(char c) {
  return std::string_view("\"`\\{}#'").find(c) != std::string_view::npos;
}

// Reads the digits in front of `end` as a whole.
std::size_t numberIn(std::string_view digits, int base) {
  std::size_t number = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
  if (result.ec != std::errc() || result.ptr != digits.data() + digits.size()) {
    throw CaseSyntaxError("no number in an escape: " + std::string(digits));
  }
  return number;
}

// Where the brace closes that has been opened in front of `begin`.
std::size_t closingBrace(std::string_view text, std::size_t begin) {
  for (std::size_t at = begin; at < text.size(); ++at) {
    if (text[at] == '\\') {
      ++at;
    } else if (text[at] == '}') {
      return at;
    }
  }
  throw CaseSyntaxError("an escape is not closed with }");
}

// Replaces the escapes; a repetition is written out only when asked for.
std::string replaceEscapes(std::string_view text, bool writeOut) {
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '\\') {
      result.push_back(text[at]);
      continue;
    }
    if (++at == text.size()) throw CaseSyntaxError("a backslash at the end of a text");
    const char letter = text[at];
    if (letter == 'n') {
      result.push_back('\n');
    } else if (letter == 't') {
      result.push_back('\t');
    } else if (letter == 'r') {
      result.push_back('\r');
    } else if (isPunctuation(letter)) {
      result.push_back(letter);
    } else {
      const std::size_t brace = std::min(text.find('{', at), text.size());
      if (brace == text.size()) {
        throw CaseSyntaxError("an unknown escape: \\" + std::string(1, letter));
      }
      const std::size_t end = closingBrace(text, brace + 1);
      const std::string_view inside = text.substr(brace + 1, end - brace - 1);
      if (letter == 'u') {
        constexpr int kHexadecimal = 16;
        const std::size_t code = numberIn(inside, kHexadecimal);
        appendCodePoint(result, static_cast<char32_t>(code));
      } else {
        constexpr int kDecimal = 10;
        const std::size_t count = numberIn(text.substr(at, brace - at), kDecimal);
        const std::string piece = replaceEscapes(inside, false);
        if (writeOut) {
          result.reserve(result.size() + count * piece.size());
          for (std::size_t i = 0; i < count; ++i) result.append(piece);
        }
      }
      at = end;
    }
  }
  return result;
}

}  // namespace

void checkEscapes(std::string_view text) { static_cast<void>(replaceEscapes(text, false)); }

std::string withoutEscapes(std::string_view text) { return replaceEscapes(text, true); }

std::string inQuotes(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\n') {
      result.append("\\n");
    } else if (c == '\t') {
      result.append("\\t");
    } else if (c == '\r') {
      result.append("\\r");
    } else if (c == '"' || c == '\\') {
      result.append({'\\', c});
    } else if (byte < ' ' || byte == 0x7F) {
      std::array<char, 16> escape{};
      static_cast<void>(std::snprintf(escape.data(), escape.size(), "\\u{%x}", unsigned{byte}));
      result.append(escape.data());
    } else {
      result.push_back(c);
    }
  }
  result.push_back('"');
  return result;
}

std::string shortened(std::string_view text) {
  constexpr std::size_t kLongest = 400;
  constexpr std::size_t kHead = 200;
  constexpr std::size_t kTail = 60;
  if (text.size() <= kLongest) return std::string(text);
  const std::size_t left = text.size() - kHead - kTail;
  std::string result = toWellFormedUTF8(text.substr(0, kHead));
  result.append(" ... ").append(std::to_string(left)).append(" bytes ... ");
  return result.append(toWellFormedUTF8(text.substr(text.size() - kTail)));
}

std::string_view stripped(std::string_view text) noexcept {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

std::size_t closingQuote(std::string_view text, std::size_t begin, char quote) {
  for (std::size_t at = begin + 1; at < text.size(); ++at) {
    if (text[at] == '\\') {
      ++at;
    } else if (text[at] == quote) {
      return at;
    }
  }
  throw CaseSyntaxError("a text is not closed with " + std::string(1, quote));
}

}  // namespace commandfilter::testing
