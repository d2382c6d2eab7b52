// Tables of Markdown files.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace commandfilter::testing {

/// A row of a table, with its line. Cells have neither blanks around them nor escaped bars.
struct MarkdownRow {
  std::size_t line;
  std::vector<std::string> cells;
};

/// A table; the header is no row.
struct MarkdownTable {
  std::vector<std::string> header;
  std::vector<MarkdownRow> rows;

  /// Where the column of that name stands; none when there is none.
  [[nodiscard]] std::optional<std::size_t> column(std::string_view name) const;
};

/// All tables of a text, in order.
[[nodiscard]] std::vector<MarkdownTable> tablesOf(std::string_view markdown);

/// The texts between backquotes in a cell.
[[nodiscard]] std::vector<std::string> codeIn(std::string_view cell);

/// The content of the fenced blocks of that kind, one after another.
[[nodiscard]] std::string blocksOf(std::string_view markdown, std::string_view kind);

/// The text as a case file: the blocks marked "examples", and the rows of the tables that have the
/// columns "example" and "value". Every line has its number in the text.
[[nodiscard]] std::string examplesOf(std::string_view markdown);

}  // namespace commandfilter::testing
