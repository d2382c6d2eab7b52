#include "OneLine.h"

#include <cstddef>
#include <string_view>

#include "ValueJSON.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Description.h"
#include "runtime/Dictionary.h"
#include "runtime/String.h"

namespace commandfilter::tools {

namespace {

constexpr std::size_t kMost = 240;

// Not inside a character.
std::string_view beginningOf(std::string_view text, std::size_t size) {
  if (text.size() <= size) return text;
  while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U) --size;
  return text.substr(0, size);
}

// Writes no more of a value than is shown: parts of it may be there many times.
class Line {
 public:
  void append(const Value& value) {
    if (isFull()) return;
    if (const auto* array = castTo<Array>(value)) {
      appendArray(*array);
    } else if (const auto* dictionary = castTo<Dictionary>(value)) {
      appendDictionary(*dictionary);
    } else if (const auto* string = castTo<String>(value)) {
      appendText(string->view());
    } else {
      appendJSON(toJSON(value));
    }
  }
  [[nodiscard]] std::string takeText() {
    if (!isFull()) return std::move(text_);
    return std::string(beginningOf(text_, kMost)).append("...");
  }

 private:
  [[nodiscard]] bool isFull() const noexcept { return text_.size() > kMost; }

  void appendJSON(const nlohmann::ordered_json& json) {
    text_.append(json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
  }
  void appendText(std::string_view text) { appendJSON(std::string(beginningOf(text, kMost + 4))); }
  void appendArray(const Array& array) {
    text_.push_back('[');
    const char* before = "";
    for (const Value& element : array) {
      if (isFull()) return;
      text_.append(before);
      append(element);
      before = ",";
    }
    text_.push_back(']');
  }
  void appendDictionary(const Dictionary& dictionary) {
    text_.push_back('{');
    const char* before = "";
    for (const DictionaryEntry& entry : dictionary) {
      if (isFull()) return;
      text_.append(before);
      if (const auto* key = castTo<String>(entry.key)) {
        appendText(key->view());
      } else if (entry.key.isNumber() || entry.key.isNull()) {
        appendText(descriptionOf(entry.key));
      } else {
        append(entry.key);
      }
      text_.push_back(':');
      append(entry.value);
      before = ",";
    }
    text_.push_back('}');
  }

  std::string text_;
};

}  // namespace

std::string oneLine(const Value& value) {
  if (value.isNil()) return "nil";
  Line line;
  line.append(value);
  return line.takeText();
}

}  // namespace commandfilter::tools
