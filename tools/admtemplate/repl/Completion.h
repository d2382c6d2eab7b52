// What the text in front of the cursor can be continued with.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "repl/Vocabulary.h"

namespace commandfilter::tools {

/// The words that can stand where the text ends.
struct Completion {
  /// Where the word begins that they would replace.
  std::size_t begin = 0;
  /// Sorted, each once; all begin with the word so far.
  std::vector<std::string> words;
  /// What closes the word, such as a bracket; may be empty.
  std::string closing;
};

/// The completions of a prompt's line up to the cursor: of a name by the sign that it begins with,
/// of a key in brackets, quotes or behind a command.
[[nodiscard]] Completion complete(std::string_view text, const Vocabulary& vocabulary);

/// The longest beginning that all words have.
[[nodiscard]] std::string commonBeginning(const std::vector<std::string>& words);

}  // namespace commandfilter::tools
