#include "expression/LexicalClasses.h"

#include "runtime/Text.h"

namespace commandfilter::detail {

bool isLetterBeyondLatin(char16_t unit) noexcept { return isLetter(unit); }

}  // namespace commandfilter::detail
