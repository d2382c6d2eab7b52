// Immutable text.
#pragma once

#include <compare>
#include <cstddef>
#include <string>
#include <string_view>

#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"

namespace commandfilter {

class Value;

/// A text, held as well-formed UTF-8; it may contain NUL. Equal when the characters are.
class COMMANDFILTER_EXPORT String final : public Object {
 public:
  static const Class kClass;
  static constexpr ObjectKind kObjectKind = ObjectKind::String;
  using KindClass = String;

  /// A string of text that is UTF-8; ill-formed sequences become U+FFFD.
  [[nodiscard]] static Ref<String> create(std::string text);
  /// A string of exactly these bytes; nil when they are not UTF-8.
  [[nodiscard]] static RefPtr<String> fromUTF8(std::string_view text);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] bool isEqual(const Value& other) const override;
  [[nodiscard]] std::size_t hash() const override;
  /// The text itself; inside a collection in double quotes where the old property-list form
  /// needs them.
  void appendDescription(std::string& text, int level) const override;

  [[nodiscard]] std::string_view view() const noexcept { return text_; }
  [[nodiscard]] const std::string& text() const noexcept { return text_; }
  /// NUL-terminated; ends early for a reader of C strings when the text contains NUL.
  [[nodiscard]] const char* cString() const noexcept { return text_.c_str(); }
  [[nodiscard]] bool isEmpty() const noexcept { return text_.empty(); }
  /// In 16-bit code units.
  [[nodiscard]] std::size_t length() const noexcept;

  /// Says that whoever asks holds the only reference to the string.
  class OnlyReference {
    friend Ref<String> concatenateTexts(Value left, const Value& right);
    OnlyReference() = default;
  };
  /// The text, to be extended with well-formed UTF-8.
  [[nodiscard]] std::string& mutableText(OnlyReference /*proof*/) noexcept {
    hash_ = 0;
    return text_;
  }

  /// Order by 16-bit code unit.
  [[nodiscard]] std::strong_ordering compare(const String& other) const noexcept;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);
  friend Ref<String> concatenateTexts(Value left, const Value& right);

  explicit String(std::string text) noexcept;
  ~String() override = default;

  std::string text_;
  mutable std::size_t hash_ = 0;
};

/// The text of a string; empty for nil.
[[nodiscard]] inline std::string_view textOf(const String* string) noexcept {
  return string != nullptr ? string->view() : std::string_view();
}

}  // namespace commandfilter
