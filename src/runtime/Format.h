// Format strings with typed arguments.
#pragma once

#include <concepts>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "runtime/Export.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// One argument of a format: an object or any other value for "%@", an integer, a real, or text
/// for "%s". Text is borrowed until the call returns.
class FormatArgument {
 public:
  FormatArgument(Value value) : content_(std::move(value)) {}
  FormatArgument(const Number& number) : FormatArgument(Value(number)) {}
  FormatArgument(std::nullptr_t) : FormatArgument(Value()) {}
  template <typename T>
  FormatArgument(const Ref<T>& object) : FormatArgument(Value(object)) {}
  template <typename T>
  FormatArgument(const RefPtr<T>& object) : FormatArgument(Value(object)) {}
  FormatArgument(const Object* object) : FormatArgument(Value::sharing(object)) {}
  FormatArgument(const Object& object) : FormatArgument(Value::sharing(&object)) {}
  template <std::integral T>
  FormatArgument(T integer) : FormatArgument(Number::integer(integer)) {}
  template <std::floating_point T>
  FormatArgument(T real) : FormatArgument(Number::real(static_cast<double>(real))) {}
  FormatArgument(const char* text) {
    if (text != nullptr) {
      content_ = std::string_view(text);
    } else {
      content_ = Value();
    }
  }
  FormatArgument(std::string_view text) : content_(text) {}
  FormatArgument(const std::string& text) : content_(std::string_view(text)) {}

  using Content = std::variant<Value, std::string_view>;
  [[nodiscard]] const Content& content() const noexcept { return content_; }

 private:
  Content content_;
};

/// Formats the arguments. Conversions: %@ the description of any argument; %d %i %u %x %X %o an
/// integer, %c one as the character U+0000 to U+00FF of its low 8 bits, %f %e %g %s as in C, with
/// flags, width and precision up to 4096; length modifiers (l, ll, z, ...) are read over, since an
/// argument knows its size; %% a percent sign. What is no conversion, and a conversion that no
/// argument is left for, stands as it is written, so that any message is safe as a format.
/// nil when an argument is of another kind than its conversion, or its text is not UTF-8.
[[nodiscard]] COMMANDFILTER_EXPORT RefPtr<String> formatWithArguments(
    std::string_view format, std::span<const FormatArgument> arguments);

/// Formats a list of arguments written out.
template <typename... Arguments>
[[nodiscard]] RefPtr<String> format(std::string_view text, const Arguments&... arguments) {
  if constexpr (sizeof...(Arguments) == 0) {
    return formatWithArguments(text, {});
  } else {
    const FormatArgument list[] = {FormatArgument(arguments)...};
    return formatWithArguments(text, list);
  }
}

}  // namespace commandfilter
