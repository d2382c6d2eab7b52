#include "language/MarkdownTables.h"

#include <algorithm>

#include "language/CaseLines.h"
#include "language/CaseText.h"

namespace commandfilter::testing {

namespace {

constexpr std::string_view kFence = "```";

std::vector<std::string> cellsOf(std::string_view line) {
  std::vector<std::string> cells;
  std::string cell;
  for (std::size_t at = 1; at < line.size(); ++at) {
    if (line[at] == '\\' && at + 1 < line.size() && line[at + 1] == '|') {
      cell.push_back(line[++at]);
    } else if (line[at] == '|') {
      cells.emplace_back(stripped(cell));
      cell.clear();
    } else {
      cell.push_back(line[at]);
    }
  }
  return cells;
}

bool isSeparator(std::string_view line) {
  return line.starts_with("|-") && line.find_first_not_of("|-: ") == std::string_view::npos;
}

std::string exampleOf(const MarkdownTable& table, const MarkdownRow& row) {
  const std::optional<std::size_t> example = table.column("example");
  const std::optional<std::size_t> value = table.column("value");
  if (!example || !value || row.cells.size() != table.header.size()) return {};
  const std::vector<std::string> expression = codeIn(row.cells[*example]);
  const std::vector<std::string> expected = codeIn(row.cells[*value]);
  if (expression.size() != 1 || expected.size() != 1) return "an example without its value";
  return expression.front() + " => " + expected.front();
}

}  // namespace

std::optional<std::size_t> MarkdownTable::column(std::string_view name) const {
  const auto found = std::ranges::find(header, name);
  if (found == header.end()) return std::nullopt;
  return static_cast<std::size_t>(found - header.begin());
}

std::vector<MarkdownTable> tablesOf(std::string_view markdown) {
  std::vector<MarkdownTable> tables;
  bool inBlock = false;
  bool inTable = false;
  std::string_view above;
  for (std::size_t number = 1; !markdown.empty(); ++number) {
    const std::string_view line = takeLine(markdown);
    if (line.starts_with(kFence)) inBlock = !inBlock;
    if (inBlock || !line.starts_with('|')) {
      inTable = false;
    } else if (!inTable && isSeparator(line)) {
      tables.push_back({cellsOf(above), {}});
      inTable = true;
    } else if (inTable) {
      tables.back().rows.push_back({number, cellsOf(line)});
    }
    above = line;
  }
  return tables;
}

std::vector<std::string> codeIn(std::string_view cell) {
  std::vector<std::string> codes;
  for (std::size_t at = cell.find('`'); at != std::string_view::npos; at = cell.find('`', at)) {
    const std::size_t end = cell.find('`', at + 1);
    if (end == std::string_view::npos) break;
    codes.emplace_back(cell.substr(at + 1, end - at - 1));
    at = end + 1;
  }
  return codes;
}

std::string blocksOf(std::string_view markdown, std::string_view kind) {
  std::string content;
  bool inBlock = false;
  while (!markdown.empty()) {
    const std::string_view line = takeLine(markdown);
    if (line.starts_with(kFence)) {
      inBlock = line.substr(kFence.size()) == kind;
    } else if (inBlock) {
      content.append(line).push_back('\n');
    }
  }
  return content;
}

std::string examplesOf(std::string_view markdown) {
  std::vector<std::string> lines;
  bool inExamples = false;
  for (std::string_view rest = markdown; !rest.empty();) {
    const std::string_view line = takeLine(rest);
    if (line.starts_with(kFence)) {
      inExamples = line == "```examples";
      lines.emplace_back();
    } else {
      lines.emplace_back(inExamples ? line : std::string_view());
    }
  }
  for (const MarkdownTable& table : tablesOf(markdown)) {
    for (const MarkdownRow& row : table.rows) lines[row.line - 1] = exampleOf(table, row);
  }
  std::string examples;
  for (const std::string& line : lines) examples.append(line).push_back('\n');
  return examples;
}

}  // namespace commandfilter::testing
