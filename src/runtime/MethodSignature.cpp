#include "runtime/MethodSignature.h"

#include <cassert>

#include "runtime/TypeCode.h"

namespace commandfilter {

std::string_view MethodSignature::methodReturnType() const noexcept {
  assert(!types_.empty());
  return typeCodeSpelling(types_.front());
}

std::string_view MethodSignature::argumentTypeAtIndex(std::size_t index) const noexcept {
  if (index == 0) return "@";
  if (index == 1) return ":";
  assert(index < numberOfArguments());
  return typeCodeSpelling(types_[index - 1]);
}

std::size_t MethodSignature::methodReturnLength() const noexcept {
  switch (types_.empty() ? 'v' : types_.front()) {
    case 'v':
      return 0;
    case 'c':
    case 'C':
      return 1;
    case 's':
    case 'S':
      return 2;
    case 'i':
    case 'I':
    case 'f':
      return 4;
    default:
      return 8;
  }
}

}  // namespace commandfilter
