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

// How many first places of a table keys have that are as those of templates and devices.
std::size_t placesOf(const std::string& prefix, int keys, std::size_t table) {
  std::set<std::size_t> places;
  for (int i = 0; i < keys; ++i) {
    // Always three digits.
    const std::string key = prefix + std::to_string(1000 + i).substr(1);
    places.insert(tableHash(hashOfText(key)) % table);
  }
  return places.size();
}

TEST(TextHash, SpreadsNumberedKeysOverATable) {
  // Chance gives 83 of 100 in 256 and 806 of 1000 in 2048.
  for (const std::string prefix : {"", "k", "key", "ink", "Ink#", "Supply", "markerColour",
                                   "1.3.6.1.2.1.43.11.1.1.", "@supplyLevelForIdentifier:ink "}) {
    EXPECT_GT(placesOf(prefix, 100, 256), 60U) << prefix;
    EXPECT_GT(placesOf(prefix, 1000, 2048), 600U) << prefix;
  }
}

TEST(TextHash, SpreadsNumbersAndAddressesOverATable) {
  for (const std::size_t step :
       {std::size_t{1}, std::size_t{16}, std::size_t{64}, std::size_t{1} << 32U}) {
    std::set<std::size_t> places;
    for (std::size_t i = 0; i < 1000; ++i) places.insert(tableHash(i * step) % 2048);
    EXPECT_GT(places.size(), 600U) << step;
  }
}

}  // namespace
}  // namespace commandfilter
