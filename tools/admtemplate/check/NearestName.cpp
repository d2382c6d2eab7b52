#include "check/NearestName.h"

#include <algorithm>
#include <numeric>

namespace commandfilter::tools {

namespace {

constexpr char lowered(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::size_t editDistance(std::string_view left, std::string_view right, std::size_t limit) {
  const std::size_t longer = std::max(left.size(), right.size());
  if (longer - std::min(left.size(), right.size()) > limit) return limit + 1;
  std::vector<std::size_t> before(right.size() + 1);
  std::vector<std::size_t> last(right.size() + 1);
  std::vector<std::size_t> row(right.size() + 1);
  std::iota(last.begin(), last.end(), std::size_t{0});
  for (std::size_t i = 1; i <= left.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= right.size(); ++j) {
      const bool same = lowered(left[i - 1]) == lowered(right[j - 1]);
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0U : 1U)});
      const bool swapped = i > 1 && j > 1 && lowered(left[i - 1]) == lowered(right[j - 2]) &&
                           lowered(left[i - 2]) == lowered(right[j - 1]);
      if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
    }
    if (*std::ranges::min_element(row) > limit) return limit + 1;
    std::swap(before, last);
    std::swap(last, row);
  }
  return std::min(last.back(), limit + 1);
}

std::string_view NearestName::of(std::string_view name) {
  constexpr std::size_t kLongest = 64;
  constexpr std::size_t kMostCompared = 2'000'000;
  if (name.empty() || name.size() > kLongest || compared_ > kMostCompared) return {};
  const auto known = known_.find(std::string(name));
  if (known != known_.end()) return known->second;
  std::string_view nearest;
  // A third of the letters may be wrong; of a short name, one.
  std::size_t limit = std::max<std::size_t>(name.size() / 3, 1);
  for (const std::string_view candidate : names_) {
    ++compared_;
    if (candidate.empty() || candidate == name) continue;
    const std::size_t distance = editDistance(name, candidate, limit);
    // A name that has no letter in common is not similar.
    if (distance > limit || distance >= candidate.size()) continue;
    nearest = candidate;
    if (distance == 0) break;
    limit = distance - 1;
  }
  known_.emplace(name, nearest);
  return nearest;
}

}  // namespace commandfilter::tools
