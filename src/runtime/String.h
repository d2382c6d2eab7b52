// Immutable text.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/TextBuffer.h"
#include "runtime/TextHash.h"

namespace commandfilter {

class Value;

/// A text, held as well-formed UTF-8; it may contain NUL. Equal when the characters are.
class COMMANDFILTER_EXPORT String final : public Object {
 public:
  static const Class kClass;
  static constexpr ObjectKind kObjectKind = ObjectKind::String;
  using KindClass = String;

  /// A string of text that is UTF-8; ill-formed sequences become U+FFFD.
  [[nodiscard]] static Ref<String> create(std::string_view text);
  /// A string of text that is known to be well-formed UTF-8.
  [[nodiscard]] static Ref<String> ofUTF8(std::string_view text);
  /// A string of exactly these bytes; nil when they are not UTF-8.
  [[nodiscard]] static RefPtr<String> fromUTF8(std::string_view text);
  /// A string of what a device sends, which rarely says how it encodes characters beyond ASCII:
  /// UTF-8 when all of it is that, otherwise Latin-1, which fits any bytes.
  [[nodiscard]] static Ref<String> fromDeviceText(std::string_view bytes);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] bool isEqual(const Value& other) const override;
  [[nodiscard]] std::size_t hash() const override {
    if (hash_ == 0) hash_ = hashOfText(view());
    return hash_;
  }
  /// The text itself; inside a collection in double quotes where the old property-list form
  /// needs them.
  void appendDescription(std::string& text, int level) const override;

  [[nodiscard]] std::string_view view() const noexcept { return text_.view(); }
  /// True for a text that isSameShortText() takes; most keys and names are.
  [[nodiscard]] bool isShort() const noexcept { return text_.isShort(); }
  /// True when the other text is the same as this short one.
  [[nodiscard]] bool isSameShortText(const String& other) const noexcept {
    return text_.isSameShortText(other.text_);
  }
  /// Eight bytes of the text; see TextBuffer.
  [[nodiscard]] std::optional<std::uint64_t> wordAt(std::size_t begin) const noexcept {
    return text_.wordAt(begin);
  }
  /// A copy of the text.
  [[nodiscard]] std::string text() const { return std::string(view()); }
  /// NUL-terminated; ends early for a reader of C strings when the text contains NUL.
  [[nodiscard]] const char* cString() const noexcept { return text_.data(); }
  [[nodiscard]] bool isEmpty() const noexcept { return view().empty(); }
  /// In 16-bit code units.
  [[nodiscard]] std::size_t length() const noexcept;

  /// Says that whoever asks holds the only reference to the string.
  class OnlyReference {
    friend Ref<String> concatenateTexts(Ref<String> left, std::span<const String* const> others);
    OnlyReference() = default;
  };
  /// Extends the text with those of other strings, which are so long together.
  void append(std::span<const String* const> others, std::size_t size, OnlyReference /*proof*/) {
    hash_ = 0;
    copyTexts(others, text_.extend(text_.view().size() + size));
  }

  /// Order by 16-bit code unit.
  [[nodiscard]] std::strong_ordering compare(const String& other) const noexcept;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit String(std::string_view text)
      : Object(ObjectKind::String, Holding::NoChain), text_(text) {}
  /// The texts of several strings; `size` is how long all are together.
  String(const String& first, std::span<const String* const> others, std::size_t size)
      : Object(ObjectKind::String, Holding::NoChain), text_(size) {
    copyTexts(others, TextBuffer::copy(first.view(), text_.begin()));
  }
  ~String() override = default;

  static void copyTexts(std::span<const String* const> strings, char* place) noexcept {
    for (const String* string : strings) place = TextBuffer::copy(string->view(), place);
  }

  TextBuffer text_;
  mutable std::size_t hash_ = 0;
};

/// The text of a string; empty for nil.
[[nodiscard]] inline std::string_view textOf(const String* string) noexcept {
  return string != nullptr ? string->view() : std::string_view();
}

}  // namespace commandfilter
