#include "expression/LexicalClasses.h"

#include <unicode/uchar.h>

namespace commandfilter::detail {

bool isLetterBeyondLatin(char16_t unit) noexcept {
  return (U_GET_GC_MASK(static_cast<UChar32>(unit)) & U_GC_L_MASK) != 0;
}

}  // namespace commandfilter::detail
