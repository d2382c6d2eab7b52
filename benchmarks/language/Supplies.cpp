#include "Supplies.h"

#include <algorithm>
#include <array>
#include <random>

namespace commandfilter::benchmarks {

namespace {

std::vector<std::size_t> shuffledNumbers(std::size_t count, std::mt19937& random) {
  std::vector<std::size_t> numbers(count);
  for (std::size_t i = 0; i < count; ++i) numbers[i] = i;
  // Not std::shuffle, which is free to use the random numbers as it likes: the same data on every
  // machine.
  for (std::size_t i = count; i > 1; --i) std::swap(numbers[i - 1], numbers[random() % i]);
  return numbers;
}

}  // namespace

std::vector<Supply> makeSupplies(std::size_t count) {
  constexpr std::array<const char*, 4> kColors{"Black", "Cyan", "Magenta", "Yellow"};
  constexpr std::uint32_t kSeed = 20210131;
  std::mt19937 random(kSeed);
  const std::vector<std::size_t> levels = shuffledNumbers(count, random);
  const std::vector<std::size_t> serials = shuffledNumbers(count, random);
  std::vector<Supply> supplies;
  supplies.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    supplies.push_back(
        {kColors[random() % kColors.size()] + std::string(" ") + std::to_string(serials[i]),
         static_cast<std::int64_t>(levels[i])});
  }
  return supplies;
}

Datum toDatum(const Supply& supply) {
  return Datum::Map{{"Name", supply.name}, {"Level", supply.level}};
}

Datum toDatum(const std::vector<Supply>& supplies) {
  Datum::List list;
  list.reserve(supplies.size());
  for (const Supply& supply : supplies) list.push_back(toDatum(supply));
  return list;
}

Datum toDatum(const std::vector<const Supply*>& supplies) {
  Datum::List list;
  list.reserve(supplies.size());
  for (const Supply* supply : supplies) list.push_back(toDatum(*supply));
  return list;
}

Datum toDatum(const std::vector<std::string>& texts) {
  return Datum::List(texts.begin(), texts.end());
}

}  // namespace commandfilter::benchmarks
