#include "runtime/TextConcatenation.h"

#include <cstddef>
#include <string>
#include <string_view>

#include "runtime/Cast.h"
#include "runtime/Description.h"
#include "runtime/SizeLimits.h"

namespace commandfilter {

namespace {

// Texts are mostly put together from several pieces: room for a few more spares allocations.
constexpr std::size_t kSpare = 32;

// The text of a value that is no string; nil is the empty text.
std::string partOf(const Value& value) {
  return value.isNil() ? std::string() : descriptionOf(value);
}

Ref<String> join(std::string_view first, std::string_view second) {
  checkTextSize(first.size() + second.size());
  return make<String>(first, second, kSpare);
}

Ref<String> joinParts(const String* first, const Value& left, const String* second,
                      const Value& right) {
  if (first != nullptr) return join(first->view(), partOf(right));
  const std::string beginning = partOf(left);
  return second != nullptr ? join(beginning, second->view()) : join(beginning, partOf(right));
}

}  // namespace

Ref<String> concatenateTexts(Value left, const Value& right) {
  auto* first = castTo<String>(left);
  const auto* second = castTo<String>(right);
  if (first != nullptr && first != second && first->referenceCount() == 1) {
    const std::string other = second == nullptr ? partOf(right) : std::string();
    const std::string_view addition = second != nullptr ? second->view() : other;
    checkTextSize(first->view().size() + addition.size());
    first->append(addition, String::OnlyReference{});
    return Ref<String>(*first);
  }
  if (first != nullptr && second != nullptr) return join(first->view(), second->view());
  return joinParts(first, left, second, right);
}

}  // namespace commandfilter
