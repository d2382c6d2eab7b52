#include "expression/LexicalClasses.h"

#include <unicode/uchar.h>

#include <array>

namespace commandfilter {

namespace {

constexpr std::size_t kASCII = 128;

constexpr std::array<bool, kASCII> lettersOfASCII() {
  std::array<bool, kASCII> letters{};
  for (std::size_t c = 'A'; c <= 'Z'; ++c) letters[c] = letters[c - 'A' + 'a'] = true;
  return letters;
}
constexpr std::array<bool, kASCII> kLetters = lettersOfASCII();

}  // namespace

bool isLetterUnit(char16_t unit) noexcept {
  if (unit < kASCII) return kLetters[unit];
  return (U_GET_GC_MASK(static_cast<UChar32>(unit)) & U_GC_L_MASK) != 0;
}

}  // namespace commandfilter
