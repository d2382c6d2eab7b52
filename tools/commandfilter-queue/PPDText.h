// A PPD file as text: its lines as they stand, and the statements among them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace commandfilter::tools {

/// A line and what ends it: CR, LF, both, or nothing at the end of the file.
struct PPDLine {
  std::string text;
  std::string end;
};

/// `*Keyword Option: "value"`, which may go over several lines.
struct PPDStatement {
  std::string keyword;
  /// Without quotes; line breaks inside are line feeds.
  std::string value;
  /// The indices of its first line and of the one behind its last, `*End` included.
  std::size_t first = 0;
  std::size_t behind = 0;
};

/// Takes a text apart and puts it together again, byte for byte.
class PPDText {
 public:
  explicit PPDText(std::string_view bytes);

  [[nodiscard]] std::string bytes() const;
  [[nodiscard]] const std::vector<PPDLine>& lines() const noexcept { return lines_; }
  /// The statements in their order; what stands inside of another's value is none.
  [[nodiscard]] std::vector<PPDStatement> statements() const;

  void replace(std::size_t line, std::string text) { lines_[line].text = std::move(text); }
  /// Inserts lines before another, ended as the file's lines are.
  void insert(std::size_t before, const std::vector<std::string>& texts);
  void erase(std::size_t first, std::size_t behind);

 private:
  std::vector<PPDLine> lines_;
};

}  // namespace commandfilter::tools
