#include "PropertyListText.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <string_view>

#include "Encodings.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Data.h"
#include "runtime/Date.h"
#include "runtime/Description.h"
#include "runtime/Dictionary.h"
#include "runtime/Number.h"
#include "runtime/StackGuard.h"
#include "runtime/String.h"

namespace commandfilter::tools {

namespace {

class Writer {
 public:
  void write(const Value& value, std::size_t level) {
    StackGuard::check();
    if (value.isNumber()) {
      writeNumber(value.number(), level);
    } else if (const auto* array = castTo<Array>(value)) {
      open("array", level);
      for (const Value& element : *array) write(element, level + 1);
      close("array", level);
    } else if (const auto* dictionary = castTo<Dictionary>(value)) {
      writeDictionary(*dictionary, level);
    } else if (const auto* data = castTo<Data>(value)) {
      element("data", base64(data->bytes()), level);
    } else if (const auto* date = castTo<Date>(value)) {
      // A time that the standard has no form for is a text, as in other reports.
      const std::string time = timeInUTC(date->secondsSince1970());
      element(time.ends_with('Z') ? "date" : "string", time, level);
    } else {
      const bool isNothing = value.isNil() || value.isNull();
      element("string", isNothing ? std::string() : descriptionOf(value), level);
    }
  }

  [[nodiscard]] std::string takeText() { return std::move(text_); }

 private:
  void indent(std::size_t level) { text_.append(level, '\t'); }
  void open(std::string_view name, std::size_t level) {
    indent(level);
    text_.append("<").append(name).append(">\n");
  }
  void close(std::string_view name, std::size_t level) {
    indent(level);
    text_.append("</").append(name).append(">\n");
  }
  void element(std::string_view name, std::string_view content, std::size_t level) {
    indent(level);
    text_.append("<").append(name).append(">");
    appendEscaped(content);
    text_.append("</").append(name).append(">\n");
  }

  // XML has no way to write most control characters, nor the last two of the first plane; they
  // become the replacement character.
  void appendEscaped(std::string_view content) {
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
    for (std::size_t i = 0; i < content.size(); ++i) {
      const char c = content[i];
      const std::string_view rest = content.substr(i);
      const bool isControl = static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n';
      if (rest.starts_with("\xEF\xBF\xBE") || rest.starts_with("\xEF\xBF\xBF")) {
        text_.append(kReplacement);
        i += kReplacement.size() - 1;
      } else if (c == '&') {
        text_.append("&amp;");
      } else if (c == '<') {
        text_.append("&lt;");
      } else if (c == '>') {
        text_.append("&gt;");
      } else if (c == '\r') {
        text_.append("&#13;");
      } else if (isControl) {
        text_.append(kReplacement);
      } else {
        text_.push_back(c);
      }
    }
  }

  void writeNumber(const Number& number, std::size_t level) {
    const bool isTruth = number.isBoolean() && (number.longValue() == 0 || number.longValue() == 1);
    if (isTruth) {
      indent(level);
      text_.append(number.boolValue() ? "<true/>\n" : "<false/>\n");
    } else if (number.isReal()) {
      std::array<char, 32> digits{};
      std::snprintf(digits.data(), digits.size(), "%.17g", number.doubleValue());
      element("real", digits.data(), level);
    } else {
      element("integer", descriptionOf(number), level);
    }
  }

  void writeDictionary(const Dictionary& dictionary, std::size_t level) {
    open("dict", level);
    for (const DictionaryEntry& entry : dictionary) {
      if (entry.value.isNull()) continue;
      element("key", descriptionOf(entry.key), level + 1);
      write(entry.value, level + 1);
    }
    close("dict", level);
  }

  std::string text_;
};

}  // namespace

std::string propertyListText(const Value& value) {
  Writer writer;
  writer.write(value, 0);
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<plist version=\"1.0\">\n" +
         writer.takeText() + "</plist>\n";
}

}  // namespace commandfilter::tools
