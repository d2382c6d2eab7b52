#include "runtime/TextConcatenation.h"

#include <cstddef>

#include "runtime/SizeLimits.h"

namespace commandfilter {

Ref<String> concatenateTexts(Ref<String> left, std::span<const String* const> others) {
  if (left->referenceCount() == 1) {
    for (const String* other : others) {
      checkTextSize(left->view().size() + other->view().size());
      left->append(other->view(), String::OnlyReference{});
    }
    return left;
  }
  std::size_t size = left->view().size();
  // Each step counts: together, sizes could be more than a number holds.
  for (const String* other : others) checkTextSize(size += other->view().size());
  return make<String>(*left, others, size);
}

}  // namespace commandfilter
