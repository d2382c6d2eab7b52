#include "runtime/CollectionComparison.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <unordered_set>
#include <utility>

namespace commandfilter {

namespace {

using Pair = std::pair<const Object*, const Object*>;

struct PairHash {
  std::size_t operator()(const Pair& pair) const noexcept {
    constexpr std::size_t kPrime = 1'000'003;
    return std::hash<const Object*>()(pair.first) * kPrime +
           std::hash<const Object*>()(pair.second);
  }
};

// Most comparisons end long before this many pairs, and need not remember any.
constexpr std::size_t kUnremembered = 1'000;

// The comparisons of the thread that are under way.
struct Progress {
  std::size_t depth = 0;
  std::size_t compared = 0;
  std::unique_ptr<std::unordered_set<Pair, PairHash>> equal;
};

Progress& progress() noexcept {
  static thread_local Progress now;
  return now;
}

}  // namespace

CollectionComparison::CollectionComparison(const Object& left, const Object& right) noexcept
    : left_(left), right_(right) {
  ++progress().depth;
}

CollectionComparison::~CollectionComparison() {
  Progress& now = progress();
  if (--now.depth > 0) return;
  now.compared = 0;
  now.equal.reset();
}

bool CollectionComparison::isKnownEqual() const {
  const Progress& now = progress();
  return now.equal && now.equal->contains({&left_, &right_});
}

bool CollectionComparison::concluded(bool equal) const {
  Progress& now = progress();
  if (!equal || ++now.compared <= kUnremembered) return equal;
  if (!now.equal) now.equal = std::make_unique<std::unordered_set<Pair, PairHash>>();
  now.equal->emplace(&left_, &right_);
  return true;
}

}  // namespace commandfilter
