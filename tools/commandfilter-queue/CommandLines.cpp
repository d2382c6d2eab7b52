#include "CommandLines.h"

#include <strings.h>

#include <algorithm>
#include <iterator>
#include <sstream>
#include <utility>

#include "ToolError.h"

namespace commandfilter::tools {

namespace {

constexpr std::string_view kFilter = "cupsFilter";
// Where there is one of these, the scheduler looks at no line of the older kind.
constexpr std::string_view kFilter2 = "cupsFilter2";
constexpr std::string_view kCommands = "cupsCommands";
constexpr std::string_view kCommandType = "application/vnd.cups-command";
constexpr std::string_view kPostScriptType = "application/vnd.cups-postscript";
constexpr std::string_view kProgram = "commandfilter";
constexpr std::string_view kBegin = "*% commandfilter-queue: begin";
constexpr std::string_view kEnd = "*% commandfilter-queue: end";
constexpr std::string_view kWas = "*% commandfilter-queue: was ";
// What the format allows a line to be, less the keyword and the quotes.
constexpr std::size_t kLongestList = 230;

bool equalsWithoutCase(const std::string& a, const std::string& b) {
  return strcasecmp(a.c_str(), b.c_str()) == 0;
}

std::vector<std::string> wordsOf(const std::string& text) {
  std::istringstream words(text);
  std::vector<std::string> list;
  for (std::string word; words >> word;) list.push_back(word);
  return list;
}

bool isFrom(const PPDStatement& filter, std::string_view type) {
  const std::vector<std::string> words = wordsOf(filter.value);
  return !words.empty() && equalsWithoutCase(words.front(), std::string(type));
}

// The program of a filter line, without its folder.
std::string programOf(const PPDStatement& filter) {
  const std::vector<std::string> words = wordsOf(filter.value);
  const std::string& path = words.back();
  return path.substr(path.rfind('/') + 1);
}

// The filter lines that the scheduler reads.
struct Filters {
  explicit Filters(const std::vector<PPDStatement>& statements) {
    isNewKind = std::ranges::any_of(statements,
                                    [](const PPDStatement& s) { return s.keyword == kFilter2; });
    for (const PPDStatement& statement : statements) {
      if (statement.keyword == (isNewKind ? kFilter2 : kFilter)) all.push_back(statement);
    }
    std::ranges::copy_if(all, std::back_inserter(ofCommands),
                         [](const PPDStatement& filter) { return isFrom(filter, kCommandType); });
  }

  bool isNewKind;
  std::vector<PPDStatement> all;
  std::vector<PPDStatement> ofCommands;
};

bool isOurs(const PPDStatement& filter) { return programOf(filter) == kProgram; }

const PPDStatement* find(const std::vector<PPDStatement>& statements, std::string_view keyword) {
  const auto found = std::ranges::find(statements, keyword, &PPDStatement::keyword);
  return found != statements.end() ? &*found : nullptr;
}

std::vector<std::string> listedCommands(const std::vector<PPDStatement>& statements) {
  const PPDStatement* list = find(statements, kCommands);
  std::vector<std::string> words;
  if (list != nullptr) words = unitedWords({}, wordsOf(list->value));
  std::erase_if(words, [](const std::string& word) { return equalsWithoutCase(word, "none"); });
  return words;
}

// A list of words as the lines of a statement.
std::vector<std::string> listLines(const std::vector<std::string>& words) {
  std::vector<std::string> lines;
  std::string line;
  for (const std::string& word : words) {
    if (!line.empty() && line.size() + word.size() >= kLongestList) {
      lines.push_back(std::move(line));
      line.clear();
    }
    line.append(line.empty() ? "" : " ").append(word);
  }
  lines.push_back(words.empty() ? "none" : std::move(line));
  const bool isLong = lines.size() > 1;
  lines.front().insert(0, "*cupsCommands: \"");
  lines.back().append("\"");
  if (isLong) lines.emplace_back("*End");
  return lines;
}

std::vector<std::string> filterLines(const Filters& filters) {
  if (filters.isNewKind) {
    return {
        R"(*cupsFilter2: "application/vnd.cups-command application/octet-stream 0 commandfilter")"};
  }
  std::vector<std::string> lines = {
      R"(*cupsFilter: "application/vnd.cups-command 0 commandfilter")"};
  // The scheduler adds this line only where there is no other, and no document would be printed.
  if (filters.all.empty()) {
    lines.emplace_back(R"(*cupsFilter: "application/vnd.cups-postscript 0 -")");
  }
  return lines;
}

[[noreturn]] void failDamaged() {
  throw ToolError(ExitStatus::Refused,
                  "the lines that an earlier attach wrote into the PPD are no longer complete; "
                  "set the printer's original PPD again (lpadmin -p QUEUE -P FILE), then attach");
}

// Takes back what attachCommands did; false when it did nothing.
bool restore(PPDText& ppd) {
  const auto at = [&ppd](std::string_view mark) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < ppd.lines().size(); ++i) {
      if (ppd.lines()[i].text == mark) places.push_back(i);
    }
    return places;
  };
  const std::vector<std::size_t> begin = at(kBegin);
  const std::vector<std::size_t> end = at(kEnd);
  if (begin.empty() && end.empty()) return false;
  if (begin.size() != 1 || end.size() != 1 || end.front() < begin.front()) failDamaged();
  ppd.erase(begin.front(), end.front() + 1);
  for (std::size_t i = 0; i < ppd.lines().size(); ++i) {
    const std::string& text = ppd.lines()[i].text;
    if (text.starts_with(kWas)) ppd.replace(i, text.substr(kWas.size()));
  }
  return true;
}

void keepAsComment(PPDText& ppd, const PPDStatement& statement) {
  for (std::size_t i = statement.first; i < statement.behind; ++i) {
    ppd.replace(i, std::string(kWas) + ppd.lines()[i].text);
  }
}

// The line before which new ones go: behind the filters, else behind the list of commands, else
// behind the line that every PPD begins with. A last line without an end stays the last.
std::size_t placeForLines(const PPDText& ppd, const std::vector<PPDStatement>& statements) {
  const PPDStatement* place = &statements.front();
  if (const PPDStatement* list = find(statements, kCommands)) place = list;
  for (const PPDStatement& statement : statements) {
    if (statement.keyword == kFilter || statement.keyword == kFilter2) place = &statement;
  }
  const bool isEnd = ppd.lines()[place->behind - 1].end.empty();
  return isEnd ? place->first : place->behind;
}

}  // namespace

CommandLines commandLinesOf(const PPDText& ppd) {
  const std::vector<PPDStatement> statements = ppd.statements();
  const Filters filters(statements);
  CommandLines result;
  for (const PPDStatement& filter : filters.ofCommands) {
    result.filters.push_back(programOf(filter));
    result.isAttached = result.isAttached || isOurs(filter);
  }
  if (result.filters.empty() &&
      (filters.all.empty() || std::ranges::any_of(filters.all, [](const PPDStatement& filter) {
         return isFrom(filter, kPostScriptType);
       }))) {
    result.filters.emplace_back("commandtops");
    result.isImplied = true;
  }
  result.isMarked =
      std::ranges::any_of(ppd.lines(), [](const PPDLine& line) { return line.text == kBegin; });
  result.commands = listedCommands(statements);
  return result;
}

std::string attachCommands(std::string_view bytes, const std::vector<std::string>& commands) {
  PPDText ppd(bytes);
  restore(ppd);
  const std::vector<PPDStatement> statements = ppd.statements();
  if (statements.empty()) throw ToolError(ExitStatus::Refused, "the PPD has no statements");
  const Filters filters(statements);
  const std::vector<std::string> before = listedCommands(statements);
  const std::vector<std::string> after = unitedWords(before, commands);
  // Somebody may have written the line by hand: then it stays.
  const bool isAttached = std::ranges::any_of(filters.ofCommands, isOurs);
  const PPDStatement* list = find(statements, kCommands);
  const bool isNewList = list == nullptr || after != before;

  std::vector<std::string> added = {std::string(kBegin)};
  if (!isAttached) std::ranges::move(filterLines(filters), std::back_inserter(added));
  if (isNewList) std::ranges::move(listLines(after), std::back_inserter(added));
  added.emplace_back(kEnd);
  bool isChanged = !isAttached || isNewList;
  for (const PPDStatement& filter : filters.ofCommands) {
    if (isOurs(filter)) continue;
    keepAsComment(ppd, filter);
    isChanged = true;
  }
  for (const PPDStatement& statement : statements) {
    if (isNewList && statement.keyword == kCommands) keepAsComment(ppd, statement);
  }
  if (isChanged) ppd.insert(placeForLines(ppd, statements), added);
  return ppd.bytes();
}

std::string detachCommands(std::string_view bytes) {
  PPDText ppd(bytes);
  restore(ppd);
  std::vector<PPDStatement> statements = ppd.statements();
  std::ranges::reverse(statements);
  for (const PPDStatement& statement : statements) {
    if ((statement.keyword == kFilter || statement.keyword == kFilter2) &&
        isFrom(statement, kCommandType) && isOurs(statement)) {
      ppd.erase(statement.first, statement.behind);
    }
  }
  return ppd.bytes();
}

std::string listedWord(std::string_view commandLine) {
  const std::vector<std::string> words = wordsOf(std::string(commandLine));
  if (words.empty()) return {};
  const bool isPlain = std::ranges::all_of(words.front(), [](char c) {
    return c > ' ' && c < '\x7F' && std::string_view("\"<>").find(c) == std::string_view::npos;
  });
  return isPlain ? words.front() : std::string();
}

std::vector<std::string> unitedWords(std::vector<std::string> words,
                                     const std::vector<std::string>& more) {
  for (const std::string& word : more) {
    const bool isKnown = word.empty() || std::ranges::any_of(words, [&word](const auto& known) {
                           return equalsWithoutCase(known, word);
                         });
    if (!isKnown) words.push_back(word);
  }
  return words;
}

}  // namespace commandfilter::tools
