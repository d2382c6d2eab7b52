// Files of language cases; README.md describes their form.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "language/CaseNotation.h"
#include "language/ContextSetup.h"

namespace commandfilter::testing {

/// One expression and what is expected of it, or what is wrong with the file at this line.
struct Case {
  /// The file's name without its folder.
  std::string file;
  /// With its folder.
  std::string path;
  std::size_t line = 0;
  /// Not empty for a line that cannot be read; then nothing else is set.
  std::string problem;

  /// As it is written; with escapes when `escaped`.
  std::string text;
  bool escaped = false;
  std::shared_ptr<const Setups> setups;
  /// The name of a context of the setups.
  std::string context;

  Notation value;
  /// The description of the error that the context has afterwards; none for no error.
  std::optional<std::string> error;
  /// The same for the context behind it.
  std::optional<std::string> parentError;
  // Not checked unless given.
  std::optional<std::string> tokens;
  std::optional<std::string> tree;
  std::optional<std::string> calls;
  std::optional<std::string> where;

  /// The expression.
  [[nodiscard]] std::string expression() const;
};

/// The cases of a file's text, in order. `import` looks into the folder.
[[nodiscard]] std::vector<Case> casesOfText(const std::string& file, std::string_view text,
                                            const std::string& folder);
/// The cases of a file; one case with a problem when it cannot be read.
[[nodiscard]] std::vector<Case> casesOfFile(const std::string& path);
/// The cases of all files of the folder whose names end in ".cases", in order of their names.
[[nodiscard]] std::vector<Case> casesOfFolder(const std::string& folder);
/// The cases in the blocks of a Markdown file that are marked as examples.
[[nodiscard]] std::vector<Case> casesOfMarkdown(const std::string& path);

}  // namespace commandfilter::testing
