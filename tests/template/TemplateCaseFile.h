// Files of template cases; README.md describes their form.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "language/CaseNotation.h"
#include "language/DeviceDouble.h"

namespace commandfilter::testing {

/// One thing that is done with a template, and what is expected.
struct TemplateStep {
  enum class Kind { Ask, Session, SessionWithServices, Errors, All, ConstantErrors };

  std::size_t line = 0;
  Kind kind = Kind::Ask;
  /// The value that is asked for.
  std::string key;
  Notation value;
  /// The description of the key's error; none for no error.
  std::optional<std::string> error;
  // Not checked unless given.
  std::optional<std::string> calls;
  std::optional<std::string> where;
};

/// A template, and what is done with it in order.
struct TemplateCase {
  using Names = std::vector<std::pair<std::string, Notation>>;

  /// The file's name without its folder, and the whole path.
  std::string file;
  std::string path;
  std::size_t line = 0;
  std::string name;
  /// Not empty for a template that cannot be read, with the line in front.
  std::string problem;

  /// By name; shared by the templates of a file.
  std::shared_ptr<const std::map<std::string, DeviceFacts>> devices;
  bool servicesAvailable = true;
  Names constants;
  Names macros;
  Names input;
  /// The descriptions of the values.
  Names values;
  /// Sections as values of any kind.
  Names sections;
  std::vector<TemplateStep> steps;
};

/// The cases of a file's text, in order.
[[nodiscard]] std::vector<TemplateCase> templateCasesOfText(const std::string& path,
                                                            std::string_view text);
/// The cases of all files of the folder whose names end in ".cases", in order of their names.
[[nodiscard]] std::vector<TemplateCase> templateCasesOfFolder(const std::string& folder);

/// The cases in the blocks of a Markdown file that are marked as examples.
[[nodiscard]] std::vector<TemplateCase> templateCasesOfMarkdown(const std::string& path);

}  // namespace commandfilter::testing
