// The name that was probably meant.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace commandfilter::tools {

/// How many letters must be changed, added, left out or swapped with their neighbours to turn one
/// text into the other; `limit` + 1 when it takes more than `limit`. Small and capital ASCII
/// letters count as the same.
[[nodiscard]] std::size_t editDistance(std::string_view left, std::string_view right,
                                       std::size_t limit);

/// Finds the known name that is most like another one. What has been looked for is remembered, and
/// after much looking it stops, so that a template of many wrong names cannot take long.
class NearestName {
 public:
  /// The first known name among the most similar ones; empty when none is similar, and when the
  /// name itself is known. The names must live as long as this.
  explicit NearestName(std::vector<std::string_view> names) : names_(std::move(names)) {}

  [[nodiscard]] std::string_view of(std::string_view name);

 private:
  std::vector<std::string_view> names_;
  std::unordered_map<std::string, std::string_view> known_;
  std::size_t compared_ = 0;
};

}  // namespace commandfilter::tools
