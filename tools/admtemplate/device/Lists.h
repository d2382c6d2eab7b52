// Lists in sentences.
#pragma once

#include <string>
#include <vector>

namespace commandfilter::tools {

/// The words with commas in between; "none" when there are none.
[[nodiscard]] inline std::string listOf(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text.append(text.empty() ? "" : ", ").append(word);
  return text.empty() ? "none" : text;
}

}  // namespace commandfilter::tools
