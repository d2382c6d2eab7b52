// The findings of one file.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "check/Finding.h"

namespace commandfilter::tools {

/// Collects findings, up to a limit, behind which one says that there are more: a
/// template of any size can be wrong in each of its parts.
class Findings {
 public:
  static constexpr std::size_t kMost = 10'000;

  void add(Finding finding) {
    if (findings_.size() < kMost) {
      findings_.push_back(std::move(finding));
    } else if (findings_.size() == kMost) {
      findings_.push_back({{kind::kMore, Severity::Warning, "there are more findings than these",
                            "repair these, and check again"},
                           nullptr,
                           nullptr,
                           {}});
    }
  }
  void addAtKey(const KeyPath* path, Complaint complaint) {
    add({std::move(complaint), path, nullptr, {}});
  }

  [[nodiscard]] const std::vector<Finding>& all() const noexcept { return findings_; }

 private:
  std::vector<Finding> findings_;
};

}  // namespace commandfilter::tools
