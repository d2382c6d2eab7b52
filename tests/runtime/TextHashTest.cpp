#include "runtime/TextHash.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>

namespace commandfilter {
namespace {

constexpr std::size_t kLongest = 40;

TEST(TextHash, IsTheSameWhereverATextLies) {
  for (std::size_t size = 0; size <= kLongest; ++size) {
    std::string text;
    for (std::size_t i = 0; i < size; ++i) text.push_back(static_cast<char>('a' + i % 26));
    for (std::size_t before = 0; before < 9; ++before) {
      const std::string around = std::string(before, 'x') + text + "y";
      EXPECT_EQ(hashOfText(std::string_view(around).substr(before, size)), hashOfText(text));
    }
  }
}

TEST(TextHash, TellsTextsApartThatDifferInOneCharacter) {
  std::set<std::size_t> hashes;
  std::size_t texts = 0;
  for (std::size_t size = 0; size <= kLongest; ++size) {
    std::string text(size, 'a');
    hashes.insert(hashOfText(text));
    ++texts;
    for (std::size_t place = 0; place < size; ++place) {
      for (const char other : {'b', 'c', 'A', '\0'}) {
        std::string changed = text;
        changed[place] = other;
        hashes.insert(hashOfText(changed));
        ++texts;
      }
    }
  }
  EXPECT_EQ(hashes.size(), texts);
}

// Tables take the low bits.
TEST(TextHash, DiffersInItsLowBits) {
  constexpr std::size_t kKeys = 4096;
  std::set<std::size_t> places;
  for (std::size_t i = 0; i < kKeys; ++i) {
    places.insert(hashOfText("key" + std::to_string(i)) % kKeys);
  }
  // As many as chance gives are 1 - 1/e of all.
  EXPECT_GT(places.size(), kKeys / 2);
}

}  // namespace
}  // namespace commandfilter
