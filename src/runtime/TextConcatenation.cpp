#include "runtime/TextConcatenation.h"

#include <cstddef>

#include "runtime/SizeLimits.h"

namespace commandfilter {

Ref<String> concatenateTexts(Ref<String> left, std::span<const String* const> others) {
  const std::size_t before = left->view().size();
  std::size_t size = before;
  // Each step counts: together, sizes could be more than a number holds.
  for (const String* other : others) checkTextSize(size += other->view().size());
  if (left->referenceCount() != 1) return make<String>(*left, others, size);
  left->append(others, size - before, String::OnlyReference{});
  return left;
}

}  // namespace commandfilter
