#include "language/CaseNotation.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

#include "expression/ADMEvaluationItemBase.h"
#include "expression/ADMItemsList.h"
#include "expression/TreePrinter.h"
#include "language/CaseText.h"
#include "language/DeviceDouble.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "runtime/Data.h"
#include "runtime/Date.h"
#include "runtime/Description.h"
#include "runtime/Dictionary.h"
#include "runtime/String.h"
#include "template/status/ADMStatusServiceProxy.h"

namespace commandfilter::testing {

namespace {

using Kind = Notation::Kind;

// What stands between < and > for an object that has a name.
std::optional<std::string> nameOfObject(const Value& value) {
  if (const auto* device = castTo<DeviceDouble>(value)) return device->name();
  if (const auto* proxy = castTo<ADMStatusServiceProxy>(value)) {
    return "proxy " + proxy->serviceName()->text();
  }
  return std::nullopt;
}

constexpr std::string_view kEncodings = "cCsSiIqQfd";

void skipBlanks(std::string_view& text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
}

[[noreturn]] void fail(const std::string& what, std::string_view rest) {
  throw CaseSyntaxError(what + ": " + std::string(rest.substr(0, 40)));
}

// Takes the text away from the start, with the blanks behind it; false when it is not there.
bool take(std::string_view& text, std::string_view expected) {
  if (!text.starts_with(expected)) return false;
  text.remove_prefix(expected.size());
  skipBlanks(text);
  return true;
}

void expect(std::string_view& text, std::string_view expected) {
  if (!take(text, expected)) fail("no " + std::string(expected), text);
}

std::string takeQuoted(std::string_view& text) {
  if (!text.starts_with('"')) fail("no text in quotes", text);
  const std::size_t end = closingQuote(text, 0, '"');
  std::string raw(text.substr(1, end - 1));
  checkEscapes(raw);
  text.remove_prefix(end + 1);
  return raw;
}

template <typename T>
Number integerOf(std::string_view digits) {
  T value{};
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (result.ec != std::errc() || result.ptr != digits.data() + digits.size()) {
    fail("no number of its encoding", digits);
  }
  return Number::integer(value);
}

Number numberOf(std::string_view digits, char encoding) {
  switch (encoding) {
    case 'c':
      return integerOf<std::int8_t>(digits);
    case 'C':
      return integerOf<std::uint8_t>(digits);
    case 's':
      return integerOf<std::int16_t>(digits);
    case 'S':
      return integerOf<std::uint16_t>(digits);
    case 'i':
      return integerOf<std::int32_t>(digits);
    case 'I':
      return integerOf<std::uint32_t>(digits);
    case 'Q':
      return integerOf<std::uint64_t>(digits);
    case 'q':
      return integerOf<std::int64_t>(digits);
    default: {
      double real = 0;
      const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), real);
      if (result.ptr != digits.data() + digits.size()) fail("no number", digits);
      return encoding == 'f' ? Number::real(static_cast<float>(real)) : Number::real(real);
    }
  }
}

Notation takeNumber(std::string_view& text) {
  const std::size_t end = std::min(text.find_first_not_of("-.0123456789"), text.size());
  const std::string_view digits = text.substr(0, end);
  Notation notation{.kind = Kind::Number};
  char encoding = digits.find('.') != std::string_view::npos ? 'd' : 'q';
  text.remove_prefix(end);
  if (!text.empty() && kEncodings.find(text.front()) != std::string_view::npos) {
    encoding = text.front();
    text.remove_prefix(1);
    notation.hasEncoding = true;
  }
  notation.number = numberOf(digits, encoding);
  if (notation.number.isBoolean()) notation.kind = Kind::Boolean;
  return notation;
}

// The values between the opening and the closing text, separated by commas.
Notation takeCollection(std::string_view& text, Kind kind, std::string_view closing) {
  Notation notation{.kind = kind};
  text.remove_prefix(1);
  skipBlanks(text);
  while (!text.starts_with(closing)) {
    if (!notation.elements.empty()) expect(text, ",");
    notation.elements.push_back(Notation::read(text));
    skipBlanks(text);
    if (kind != Kind::Dictionary) continue;
    expect(text, ":");
    notation.elements.push_back(Notation::read(text));
    skipBlanks(text);
  }
  text.remove_prefix(closing.size());
  return notation;
}

// What stands between braces behind a word; the last closing brace ends it.
Notation takeBraced(std::string_view& text, Kind kind) {
  const std::size_t end = kind == Kind::Items ? text.rfind(')') : text.find(')');
  if (end == std::string_view::npos) fail("no )", text);
  Notation notation{.kind = kind, .text = std::string(text.substr(0, end))};
  text.remove_prefix(end + 1);
  if (kind == Kind::Date) notation.number = numberOf(notation.text, 'd');
  return notation;
}

Value dictionaryOf(const std::vector<Notation>& elements) {
  DictionaryBuilder builder;
  for (std::size_t i = 0; i + 1 < elements.size(); i += 2) {
    builder.set(elements[i].value(), elements[i + 1].value());
  }
  return builder.build();
}

std::string bytesOf(std::string_view hexadecimal) {
  std::string bytes;
  for (std::size_t at = 0; at + 1 < hexadecimal.size(); at += 2) {
    unsigned byte = 0;
    constexpr int kHexadecimal = 16;
    std::from_chars(hexadecimal.data() + at, hexadecimal.data() + at + 2, byte, kHexadecimal);
    bytes.push_back(static_cast<char>(byte));
  }
  return bytes;
}

bool arrayMatches(const std::vector<Notation>& elements, const Value& value) {
  const auto* array = castTo<Array>(value);
  return array != nullptr &&
         std::equal(elements.begin(), elements.end(), array->begin(), array->end(),
                    [](const Notation& one, const Value& other) { return one.matches(other); });
}

bool dictionaryMatches(const std::vector<Notation>& elements, const Value& value) {
  const auto* dictionary = castTo<Dictionary>(value);
  if (dictionary == nullptr || dictionary->count() * 2 != elements.size()) return false;
  auto expected = elements.begin();
  for (const DictionaryEntry& entry : *dictionary) {
    const Notation& key = *expected++;
    if (!key.matches(entry.key) || !(expected++)->matches(entry.value)) return false;
  }
  return true;
}

std::string treesOf(const ADMItemsList& list) {
  std::string text;
  const RefPtr<Array> items = list.items();
  if (!items) return text;
  for (std::size_t i = 0; i < items->count(); ++i) {
    if (i != 0) text.append(", ");
    const auto* tree = castTo<ADMEvaluationItemBase>((*items)[i]);
    text.append(tree != nullptr ? printedTree(*tree) : notationOf((*items)[i]));
  }
  return text;
}

std::string numberText(const Number& number) {
  if (number.encoding() == 'c' && number.longValue() == 1) return "YES";
  if (number.encoding() == 'c' && number.longValue() == 0) return "NO";
  return descriptionOf(number) + number.encoding();
}

template <typename Collection, typename Print>
std::string joined(const Collection& collection, char opening, char closing, Print&& print) {
  std::string text(1, opening);
  for (const auto& element : collection) {
    if (text.size() > 1) text.append(", ");
    text.append(print(element));
  }
  return text.append(1, closing);
}

}  // namespace

Notation Notation::read(std::string_view& text) {
  skipBlanks(text);
  if (text.empty()) throw CaseSyntaxError("no value");
  const char first = text.front();
  if (first == '"') return {.kind = Kind::String, .text = takeQuoted(text)};
  if (first == '[') return takeCollection(text, Kind::Array, "]");
  if (first == '{') return takeCollection(text, Kind::Dictionary, "}");
  if (first == '-' || (first >= '0' && first <= '9')) return takeNumber(text);
  if (first == '<') {
    const std::size_t end = text.find('>');
    if (end == std::string_view::npos) fail("no >", text);
    Notation notation{.kind = Kind::Object, .text = std::string(text.substr(1, end - 1))};
    text.remove_prefix(end + 1);
    return notation;
  }
  const std::size_t end = std::min(text.find_first_of(" ,]}:("), text.size());
  const std::string_view word = text.substr(0, end);
  const std::string_view rest = text;
  text.remove_prefix(end);
  if (word == "nil") return {};
  if (word == "null") return {.kind = Kind::Null};
  if (word == "YES") return {.kind = Kind::Boolean, .number = Number::boolean(true)};
  if (word == "NO") return {.kind = Kind::Boolean, .number = Number::boolean(false)};
  if (word == "raises" || word == "fails") {
    skipBlanks(text);
    return {.kind = word == "raises" ? Kind::Raises : Kind::Fails, .text = takeQuoted(text)};
  }
  if (text.starts_with('(')) {
    text.remove_prefix(1);
    if (word == "date") return takeBraced(text, Kind::Date);
    if (word == "data") return takeBraced(text, Kind::Data);
    if (word == "items") return takeBraced(text, Kind::Items);
  }
  fail("no value", rest);
}

Notation Notation::readWhole(std::string_view text) {
  Notation notation = read(text);
  skipBlanks(text);
  if (!text.empty()) fail("more than a value", text);
  return notation;
}

Value Notation::value() const {
  switch (kind) {
    case Kind::Null:
      return Value::null();
    case Kind::Boolean:
    case Kind::Number:
      return number;
    case Kind::String:
      return String::create(withoutEscapes(text));
    case Kind::Array: {
      ValueVector values;
      values.reserve(elements.size());
      for (const Notation& element : elements) values.push_back(element.value());
      return Array::create(std::move(values));
    }
    case Kind::Dictionary:
      return dictionaryOf(elements);
    case Kind::Date:
      return Date::create(number.doubleValue());
    case Kind::Data:
      return Data::create(bytesOf(text));
    default:
      return {};
  }
}

bool Notation::matches(const Value& value) const {
  switch (kind) {
    case Kind::Nil:
      return value.isNil();
    case Kind::Null:
      return value.isNull();
    case Kind::Boolean:
      return value.isBoolean() && value.number() == number;
    case Kind::Number:
      return value.isNumber() && !value.isBoolean() && value.number() == number &&
             (!hasEncoding || value.number().encoding() == number.encoding());
    case Kind::String: {
      const auto* string = castTo<String>(value);
      return string != nullptr && string->view() == withoutEscapes(text);
    }
    case Kind::Array:
      return arrayMatches(elements, value);
    case Kind::Dictionary:
      return dictionaryMatches(elements, value);
    case Kind::Date:
    case Kind::Data:
      return equal(this->value(), value);
    case Kind::Object: {
      return nameOfObject(value) == text;
    }
    case Kind::Items: {
      const auto* list = castTo<ADMItemsList>(value);
      return list != nullptr && treesOf(*list) == text;
    }
    default:
      return false;
  }
}

std::string Notation::print() const {
  switch (kind) {
    case Kind::Nil:
      return "nil";
    case Kind::Null:
      return "null";
    case Kind::Boolean:
      return numberText(number);
    case Kind::Number:
      return hasEncoding ? numberText(number) : descriptionOf(number);
    case Kind::String:
      return '"' + text + '"';
    case Kind::Array:
      return joined(elements, '[', ']', [](const Notation& element) { return element.print(); });
    case Kind::Dictionary: {
      std::string printed = "{";
      for (std::size_t i = 0; i + 1 < elements.size(); i += 2) {
        if (i != 0) printed.append(", ");
        printed.append(elements[i].print()).append(": ").append(elements[i + 1].print());
      }
      return printed.append("}");
    }
    case Kind::Date:
      return "date(" + text + ")";
    case Kind::Data:
      return "data(" + text + ")";
    case Kind::Object:
      return "<" + text + ">";
    case Kind::Items:
      return "items(" + text + ")";
    case Kind::Raises:
      return "raises \"" + text + '"';
    case Kind::Fails:
      return "fails \"" + text + '"';
  }
  return {};
}

std::string notationOf(const Value& value) {
  if (value.isNil()) return "nil";
  if (value.isNull()) return "null";
  if (value.isNumber()) return numberText(value.number());
  if (const auto* string = castTo<String>(value)) return inQuotes(string->view());
  if (const auto* array = castTo<Array>(value)) return joined(*array, '[', ']', notationOf);
  if (const auto* dictionary = castTo<Dictionary>(value)) {
    return joined(*dictionary, '{', '}', [](const DictionaryEntry& entry) {
      return notationOf(entry.key) + ": " + notationOf(entry.value);
    });
  }
  if (const auto* list = castTo<ADMItemsList>(value)) return "items(" + treesOf(*list) + ")";
  if (const std::optional<std::string> name = nameOfObject(value)) return "<" + *name + ">";
  return std::string(classOf(value)->name) + "(" + descriptionOf(value) + ")";
}

}  // namespace commandfilter::testing
