#include "runtime/String.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "runtime/Class.h"
#include "runtime/Description.h"
#include "runtime/Text.h"
#include "runtime/UTF8.h"

namespace commandfilter {

namespace {

std::int64_t integerValue(const String& receiver) {
  return std::strtoll(receiver.cString(), nullptr, 10);
}
std::int32_t intValue(const String& receiver) {
  // Limited, not cut: this is how the platform reads a number out of a text.
  const std::int64_t value = integerValue(receiver);
  if (value > INT32_MAX) return INT32_MAX;
  return value < INT32_MIN ? INT32_MIN : static_cast<std::int32_t>(value);
}
double doubleValue(const String& receiver) { return std::strtod(receiver.cString(), nullptr); }
float floatValue(const String& receiver) { return std::strtof(receiver.cString(), nullptr); }
std::uint64_t lengthOf(const String& receiver) { return receiver.length(); }
const char* utf8String(const String& receiver) { return receiver.cString(); }
Ref<String> uppercaseString(const String& receiver) {
  return String::create(uppercase(receiver.view()));
}
Ref<String> lowercaseString(const String& receiver) {
  return String::create(lowercase(receiver.view()));
}

// The first byte in which the texts differ; the size of the shorter one when it begins the other.
std::size_t firstDifference(std::string_view first, std::string_view second) noexcept {
  const std::size_t end = std::min(first.size(), second.size());
  std::size_t place = 0;
  // Eight bytes at a time as long as they are the same.
  for (std::uint64_t left = 0, right = 0; place + sizeof left <= end; place += sizeof left) {
    std::memcpy(&left, first.data() + place, sizeof left);
    std::memcpy(&right, second.data() + place, sizeof right);
    if (left != right) break;
  }
  while (place < end && first[place] == second[place]) ++place;
  return place;
}

constexpr std::array kStringMethods{
    method<&lengthOf>("length"),
    method<&intValue>("intValue"),
    method<&integerValue>("integerValue"),
    method<&doubleValue>("doubleValue"),
    method<&floatValue>("floatValue"),
    method<&utf8String>("UTF8String"),
    method<&uppercaseString>("uppercaseString"),
    method<&lowercaseString>("lowercaseString"),
};

}  // namespace

constinit const Class String::kClass{
    .name = "String", .base = &Object::kClass, .methods = kStringMethods};

Ref<String> String::create(std::string_view text) {
  if (!isUTF8(text)) return make<String>(std::string_view(toWellFormedUTF8(text)));
  return make<String>(text);
}

Ref<String> String::ofUTF8(std::string_view text) {
  assert(isUTF8(text));
  return make<String>(text);
}

RefPtr<String> String::fromUTF8(std::string_view text) {
  if (!isUTF8(text)) return nullptr;
  return make<String>(text);
}

Ref<String> String::fromDeviceText(std::string_view bytes) {
  if (isUTF8(bytes)) return make<String>(bytes);
  std::string text;
  for (const char byte : bytes) appendCodePoint(text, static_cast<unsigned char>(byte));
  return make<String>(std::string_view(text));
}

bool String::isEqual(const Value& other) const {
  if (other.object() == this) return true;
  return other.isKind(ObjectKind::String) &&
         static_cast<const String*>(other.object())->view() == view();
}

void String::appendDescription(std::string& text, int level) const {
  if (level == 0) {
    text.append(view());
  } else {
    appendQuoted(text, view());
  }
}

std::size_t String::length() const noexcept { return lengthInCodeUnits(view()); }

std::strong_ordering String::compare(const String& other) const noexcept {
  const std::string_view mine = view();
  const std::string_view theirs = other.view();
  const std::size_t place = firstDifference(mine, theirs);
  if (place == std::min(mine.size(), theirs.size())) return mine.size() <=> theirs.size();
  const auto left = static_cast<unsigned char>(mine[place]);
  const auto right = static_cast<unsigned char>(theirs[place]);
  // UTF-8 orders as code points do; in 16-bit units U+10000 and up (first byte from F0) stand
  // before U+E000 to U+FFFF (first byte EE or EF).
  constexpr unsigned char kPrivateUse = 0xEE;
  constexpr unsigned char kFourBytes = 0xF0;
  if (left >= kPrivateUse && right >= kPrivateUse) {
    const bool leftLong = left >= kFourBytes;
    const bool rightLong = right >= kFourBytes;
    if (leftLong != rightLong) {
      return leftLong ? std::strong_ordering::less : std::strong_ordering::greater;
    }
  }
  return left <=> right;
}

}  // namespace commandfilter
