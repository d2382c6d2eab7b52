// Where something stands in a property list.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace commandfilter::tools {

/// The keys that lead from the root of a property list to a place in it, as a chain that places
/// share.
struct KeyPath {
  /// nullptr for a key of the root. Borrowed.
  const KeyPath* parent = nullptr;
  std::string_view key;

  /// The keys from the root on.
  [[nodiscard]] std::vector<std::string> keys() const {
    std::vector<std::string> keys;
    for (const KeyPath* part = this; part != nullptr; part = part->parent) {
      keys.insert(keys.begin(), std::string(part->key));
    }
    return keys;
  }
};

/// Keeps key paths, which do not move. The keys must outlive it.
class KeyPaths {
 public:
  const KeyPath& add(const KeyPath* parent, std::string_view key) {
    return paths_.emplace_back(KeyPath{parent, key});
  }

 private:
  std::deque<KeyPath> paths_;
};

}  // namespace commandfilter::tools
