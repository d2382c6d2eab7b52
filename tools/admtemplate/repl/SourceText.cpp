#include "repl/SourceText.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "runtime/UTF8.h"

namespace commandfilter::tools {

namespace {

bool isContinuation(char c) noexcept { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

}  // namespace

SourceText::SourceText(Ref<String> expression) : expression_(std::move(expression)) {
  const std::string_view text = expression_->view();
  if (std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80U; })) {
    return;
  }
  for (std::size_t offset = 0; offset < text.size();) {
    const std::size_t begin = offset;
    const bool isPair = nextCodePoint(text, offset) >= 0x10000;
    bytes_.insert(bytes_.end(), isPair ? 2U : 1U, begin);
  }
}

std::size_t SourceText::byteOfUnit(std::size_t unit) const noexcept {
  if (bytes_.empty()) return std::min(unit, expression_->view().size());
  return unit < bytes_.size() ? bytes_[unit] : expression_->view().size();
}

std::string SourceText::part(const SourceRange& range) const {
  constexpr std::size_t kSide = 200;
  const std::size_t begin = byteOfUnit(range.begin);
  const std::string_view all =
      expression_->view().substr(begin, std::max(byteOfUnit(range.end), begin) - begin);
  std::string text(all);
  if (all.size() > 2 * kSide) {
    // Not inside a character.
    std::size_t left = kSide;
    while (isContinuation(all[left])) --left;
    std::size_t right = all.size() - kSide;
    while (isContinuation(all[right])) ++right;
    text = std::string(all.substr(0, left)).append("...").append(all.substr(right));
  }
  std::ranges::replace_if(
      text, [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
  return text;
}

}  // namespace commandfilter::tools
