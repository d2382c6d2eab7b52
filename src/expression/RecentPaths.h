// The feature paths that were read last.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

#include "runtime/Array.h"
#include "runtime/Ref.h"
#include "runtime/TextEquality.h"

namespace commandfilter {

/// Remembers a few feature paths by how they are written: expressions ask for the same ones again
/// and again, which then share their components.
class RecentPaths {
 public:
  /// The path that is written like this; made when it is not remembered. The text is borrowed as
  /// long as this lives.
  template <typename Make>
  [[nodiscard]] Ref<Array> pathFor(std::string_view text, Make&& makePath) {
    // Each path has one place, which it takes from the path that had it before.
    Entry& entry = entries_[placeHash(text) % kPlaces];
    if (!entry.path || !sameText(entry.text, text)) entry = {text, makePath()};
    return Ref<Array>(*entry.path);
  }

 private:
  static constexpr std::size_t kPlaces = 16;

  struct Entry {
    std::string_view text;
    RefPtr<Array> path;
  };

  std::array<Entry, kPlaces> entries_;
};

}  // namespace commandfilter
