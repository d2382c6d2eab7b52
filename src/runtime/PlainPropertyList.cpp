#include "runtime/PlainPropertyList.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>

#include "runtime/Data.h"
#include "runtime/Date.h"
#include "runtime/Number.h"
#include "runtime/PropertyListBuilder.h"
#include "runtime/String.h"
#include "runtime/UTF8.h"
#include "runtime/XMLScalar.h"

namespace commandfilter::detail {

namespace {

using Collection = PropertyListBuilder::Collection;

enum class Character : std::uint8_t { Other, Plain, Blank };

// What the characters of a text are: plain ones and blanks need no further look. All of it is as
// XML has it; a carriage return is a blank only between the elements.
constexpr auto kCharacters = [] {
  constexpr unsigned char kFirst = ' ';
  constexpr unsigned char kBehind = 0x80;
  std::array<Character, 256> characters{};
  for (std::size_t c = kFirst; c < kBehind; ++c) characters[c] = Character::Plain;
  for (const char c : {'<', '&', '>'}) characters[static_cast<unsigned char>(c)] = Character::Other;
  for (const char c : {' ', '\t', '\n'}) {
    characters[static_cast<unsigned char>(c)] = Character::Blank;
  }
  return characters;
}();

Character characterOf(char c) noexcept { return kCharacters[static_cast<unsigned char>(c)]; }
bool isInText(char c) noexcept { return characterOf(c) != Character::Other; }
bool isBlank(char c) noexcept { return characterOf(c) == Character::Blank || c == '\r'; }

using Word = std::uint64_t;

constexpr Word inEachByte(unsigned char c) { return Word{0x0101010101010101U} * c; }
// How many of the next eight characters come before one that is not plain, or is a blank other than
// the space.
std::size_t countPlain(const char* text) noexcept {
  Word word = 0;
  std::memcpy(&word, text, sizeof word);
  // The difference of a byte has the high bit when the byte is smaller, or is none of ASCII, and
  // perhaps behind such a byte: the first one counts. These two characters differ in one bit.
  constexpr unsigned char kDifference = '<' ^ '>';
  const Word isOther = word | (word - inEachByte(' ')) |
                       ((word ^ inEachByte('&')) - inEachByte(1)) |
                       (((word | inEachByte(kDifference)) ^ inEachByte('>')) - inEachByte(1));
  return static_cast<std::size_t>(std::countr_zero(isOther & inEachByte(0x80))) / 8;
}

// Blanks between two elements, and the "<" behind them, as the word that they begin.
class Gap {
 public:
  Gap() = default;
  // Of at most kLongest blanks at `text`.
  Gap(const char* text, std::size_t blanks) noexcept
      : size_(blanks), mask_(~Word{0} >> (kLongest - blanks) * 8), word_(wordAt(text) & mask_) {}

  static constexpr std::size_t kLongest = sizeof(Word) - 1;

  [[nodiscard]] std::size_t size() const noexcept { return size_; }
  // Whether this gap stands here, and behind it no comment.
  [[nodiscard]] bool isAt(const char* text) const noexcept {
    return ((wordAt(text) ^ word_) & mask_) == 0 && text[size_ + 1] != '!';
  }

 private:
  static Word wordAt(const char* text) noexcept {
    Word word = 0;
    std::memcpy(&word, text, sizeof word);
    return word;
  }

  std::size_t size_ = 0;
  // No text begins with a NUL.
  Word mask_ = 0xFF;
  Word word_ = 0;
};

struct Entity {
  std::string_view reference;
  char character;
};
constexpr std::array kEntities{Entity{"&lt;", '<'}, Entity{"&gt;", '>'}, Entity{"&amp;", '&'},
                               Entity{"&quot;", '"'}, Entity{"&apos;", '\''}};

// True for UTF-8 without the characters that XML does not have.
bool isTextInXML(std::string_view text) {
  return std::ranges::all_of(
             text, [](char c) { return static_cast<unsigned char>(c) >= ' ' || isBlank(c); }) &&
         isUTF8(text) && text.find("\xEF\xBF\xBE") == std::string_view::npos &&
         text.find("\xEF\xBF\xBF") == std::string_view::npos;
}

class Reader {
 public:
  explicit Reader(std::string_view text) : at_(text.data()), end_(at_ + text.size()) {}

  std::optional<Value> read() {
    if (!readHead()) return std::nullopt;
    do {
      skipGap();
      if (builder_.isFull() || !(builder_.wantsKey() ? readKey() : readValue())) {
        return std::nullopt;
      }
    } while (!builder_.isComplete());
    skipBlanks();
    if (!takes("</plist>")) return std::nullopt;
    skipBlanks();
    if (at_ != end_) return std::nullopt;
    return builder_.take();
  }

 private:
  [[nodiscard]] std::string_view rest() const { return {at_, end_}; }
  bool takes(std::string_view text) {
    if (!rest().starts_with(text)) return false;
    at_ += text.size();
    return true;
  }
  [[nodiscard]] bool hasWord() const noexcept {
    return static_cast<std::size_t>(end_ - at_) >= sizeof(Word);
  }
  [[nodiscard]] bool hasMoreThanWord() const noexcept {
    return static_cast<std::size_t>(end_ - at_) > sizeof(Word);
  }
  template <typename Accepts>
  void skipWhile(Accepts&& accepts) {
    while (at_ != end_ && accepts(*at_)) ++at_;
  }
  // The same, where an element is to come. Lines have mostly the indentation of one of the last
  // two: that of the collection, or that of the one around it.
  void skipGap() {
    if constexpr (std::endian::native == std::endian::little) {
      if (hasMoreThanWord()) {
        for (const Gap& gap : gaps_) {
          if (!gap.isAt(at_)) continue;
          at_ += gap.size();
          return;
        }
        const char* begin = at_;
        skipWhile(isBlank);
        const auto blanks = static_cast<std::size_t>(at_ - begin);
        if (blanks <= Gap::kLongest && at_ != end_ && *at_ == '<') {
          gaps_[0] = std::exchange(gaps_[1], Gap(begin, blanks));
        }
      }
    }
    skipBlanks();
  }
  // Blanks and comments; a comment with something to object to stays.
  void skipBlanks() {
    do {
      skipWhile(isBlank);
    } while (takesComment());
  }
  bool takesComment() {
    constexpr std::string_view kBegin = "<!--";
    constexpr std::string_view kEnd = "-->";
    if (!rest().starts_with(kBegin)) return false;
    const std::string_view behind = rest().substr(kBegin.size());
    // Two hyphens can only end it.
    const std::size_t size = std::min(behind.find("--"), behind.size());
    const std::string_view text = behind.substr(0, size);
    if (!behind.substr(size).starts_with(kEnd) || !isTextInXML(text)) return false;
    at_ += kBegin.size() + size + kEnd.size();
    return true;
  }
  // Apart from those who want a text, so that each of them compares with the tag that it knows.
  [[gnu::noinline]] void skipText() {
    if constexpr (std::endian::native == std::endian::little) {
      while (hasWord()) {
        const std::size_t count = countPlain(at_);
        at_ += count;
        if (count == sizeof(Word)) continue;
        if (!isInText(*at_)) return;
        ++at_;
      }
    }
    skipWhile(isInText);
  }

  bool readHead() {
    takes(R"(<?xml version="1.0" encoding="UTF-8"?>)");
    skipBlanks();
    if (takes(R"(<!DOCTYPE plist PUBLIC ")")) {
      if (!readLiteral() || !takes(R"( ")") || !readLiteral() || !takes(">")) return false;
      skipBlanks();
    }
    return takes(R"(<plist version="1.0">)") || takes("<plist>");
  }
  // The name of a document type, or where it is, up to the closing quote.
  bool readLiteral() {
    skipWhile([](char c) {
      constexpr std::string_view kOthers = " -./:+";
      return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
             kOthers.find(c) != std::string_view::npos;
    });
    return takes("\"");
  }

  bool readKey() {
    if (!takes("<key>")) return takes("</dict>") && builder_.end();
    const auto key = textBefore("</key>");
    if (key) builder_.addKey(*key);
    return key.has_value();
  }

  bool readValue() {
    if (takes("<string>")) {
      return addScalar("</string>",
                       [](std::string_view text) { return std::optional(String::ofUTF8(text)); });
    }
    if (takes("<dict>")) return begin(Collection::Dictionary);
    if (takes("<integer>")) return addScalar("</integer>", integerFromXML);
    if (takes("<array>")) return begin(Collection::Array);
    if (takes("</array>")) return isInArray() && builder_.end();
    if (takes("<true/>")) return add(Value::boolean(true));
    if (takes("<false/>")) return add(Value::boolean(false));
    if (takes("<real>")) {
      return addScalar("</real>", [](std::string_view text) {
        const auto number = realFromXML(text);
        return number ? std::optional(Number::real(*number)) : std::nullopt;
      });
    }
    if (takes("<date>")) {
      return addScalar("</date>", [](std::string_view text) {
        const auto seconds = dateFromXML(text);
        return seconds ? std::optional(Date::create(*seconds)) : std::nullopt;
      });
    }
    if (takes("<data>")) {
      return addScalar("</data>", [](std::string_view text) {
        auto bytes = dataFromXML(text);
        return bytes ? std::optional(Data::create(std::move(*bytes))) : std::nullopt;
      });
    }
    if (takes("<string/>")) return add(String::create({}));
    if (takes("<dict/>")) return begin(Collection::Dictionary) && builder_.end();
    return takes("<array/>") && begin(Collection::Array) && builder_.end();
  }

  [[nodiscard]] bool isInArray() const {
    return !builder_.isOutside() && !builder_.isInDictionary();
  }
  bool begin(Collection collection) {
    if (builder_.isDeepest()) return false;
    builder_.begin(collection);
    return true;
  }
  bool add(Value value) {
    builder_.add(std::move(value));
    return true;
  }
  template <typename Read>
  bool addScalar(std::string_view endTag, Read&& read) {
    const auto text = textBefore(endTag);
    if (!text) return false;
    auto value = read(*text);
    return value && add(std::move(*value));
  }

  // The text up to this tag, which must be the next one. It stands until the next text is read.
  std::optional<std::string_view> textBefore(std::string_view endTag) {
    const char* begin = at_;
    skipText();
    const std::string_view text(begin, at_);
    if (takes(endTag)) return text;
    return otherTextBefore(endTag, begin);
  }

  // The same for a text with characters that need a look, the first of which is next.
  [[gnu::noinline]] std::optional<std::string_view> otherTextBefore(std::string_view endTag,
                                                                    const char* begin) {
    bool isASCII = true;
    text_.clear();
    for (; at_ != end_ && *at_ != '<'; skipText()) {
      if (*at_ == '&') {
        text_.append(begin, at_);
        if (!readEntity()) return std::nullopt;
        begin = at_;
        continue;
      }
      if (*at_ == '>') {
        if (std::string_view(at_ - 2, 2) == "]]") return std::nullopt;
      } else if (static_cast<unsigned char>(*at_) < 0x80) {
        return std::nullopt;
      } else {
        isASCII = false;
      }
      ++at_;
    }
    text_.append(begin, at_);
    if (!takes(endTag) || !(isASCII || isTextInXML(text_))) return std::nullopt;
    return text_;
  }

  bool readEntity() {
    for (const Entity& entity : kEntities) {
      if (!takes(entity.reference)) continue;
      text_.push_back(entity.character);
      return true;
    }
    return false;
  }

  const char* at_;
  const char* end_;
  std::array<Gap, 2> gaps_;
  PropertyListBuilder builder_;
  std::string text_;
};

}  // namespace

std::optional<Value> readPlainPropertyList(std::string_view text) { return Reader(text).read(); }

}  // namespace commandfilter::detail
