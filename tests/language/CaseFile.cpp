#include "language/CaseFile.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "language/CaseLines.h"
#include "language/CaseText.h"
#include "language/MarkdownTables.h"

namespace commandfilter::testing {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kArrow = "=>";

std::optional<std::string> contentOf(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

// Where an arrow stands that has a blank on both sides or ends the line.
std::size_t arrowIn(std::string_view text, std::size_t from) {
  for (std::size_t at = text.find(kArrow, from); at != std::string_view::npos;
       at = text.find(kArrow, at + 1)) {
    const std::size_t end = at + kArrow.size();
    if ((at == 0 || text[at - 1] == ' ') && (end == text.size() || text[end] == ' ')) return at;
  }
  return std::string_view::npos;
}

std::size_t wholeNumber(std::string_view text) {
  std::size_t number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
    throw CaseSyntaxError("no number: " + std::string(text));
  }
  return number;
}

// The two sides of "left = right".
std::pair<std::string_view, std::string_view> sidesOf(std::string_view text) {
  if (text.ends_with(" =")) return {stripped(text.substr(0, text.size() - 2)), {}};
  const std::size_t at = text.find(" = ");
  if (at == std::string_view::npos) {
    throw CaseSyntaxError("neither name nor value: " + std::string(text));
  }
  return {stripped(text.substr(0, at)), stripped(text.substr(at + 3))};
}

Notation stringNotation(std::string_view text) {
  return {.kind = Notation::Kind::String, .text = std::string(text)};
}

// A name as it stands, or in quotes.
std::string nameOf(std::string_view text) {
  return text.starts_with('"') ? Notation::readWhole(text).text : std::string(text);
}

// {Name}[Key].a.b as the array of its components, the key last; or such an array.
Notation pathOf(std::string_view text) {
  if (text.starts_with('[')) return Notation::readWhole(text);
  Notation path{.kind = Notation::Kind::Array};
  const std::size_t brace = text.find('}');
  if (brace == std::string_view::npos) throw CaseSyntaxError("no feature path");
  path.elements.push_back(stringNotation(text.substr(1, brace - 1)));
  text.remove_prefix(brace + 1);
  std::optional<Notation> key;
  if (text.starts_with('[')) {
    const std::size_t bracket = std::min(text.find(']'), text.size() - 1);
    key = stringNotation(text.substr(1, bracket - 1));
    text.remove_prefix(bracket + 1);
  }
  while (text.starts_with('.')) {
    text.remove_prefix(1);
    const std::size_t end = std::min(text.find('.'), text.size());
    path.elements.push_back(stringNotation(text.substr(0, end)));
    text.remove_prefix(end);
  }
  if (!text.empty()) throw CaseSyntaxError("no feature path");
  if (key) path.elements.push_back(std::move(*key));
  return path;
}

// Reads the lines of one file; imported files add their setups.
class Reader {
 public:
  Reader(std::string file, std::string folder, std::shared_ptr<Setups> setups)
      : file_(std::move(file)), folder_(std::move(folder)), setups_(std::move(setups)) {}

  std::vector<Case> read(std::string_view text) {
    for (const CaseLine& line : linesOf(text)) {
      try {
        if (line.indented) {
          readDetail(line.text);
        } else {
          finishCase();
          readStart(line);
        }
      } catch (const CaseSyntaxError& error) {
        complain(line.number, error.what());
      }
    }
    finishCase();
    return std::move(cases_);
  }

 private:
  enum class Block { None, Device, Context, Case };

  void complain(std::size_t line, const std::string& what) {
    Case broken;
    broken.file = file_;
    broken.path = folder_ + "/" + file_;
    broken.line = line;
    broken.problem = what;
    cases_.push_back(std::move(broken));
    block_ = Block::None;
    broken_ = true;
  }

  void readStart(const CaseLine& line) {
    broken_ = false;
    const auto [word, rest] = firstWordOf(line.text);
    const bool isCase =
        line.text.starts_with('`') || arrowIn(line.text, 0) != std::string_view::npos;
    if (!isCase && word == "import") {
      importFile(std::string(rest));
    } else if (!isCase && word == "device") {
      block_ = Block::Device;
      name_ = rest;
      if (!setups_->devices.emplace(name_, DeviceFacts{.name = name_, .messages{}, .features{}})
               .second) {
        throw CaseSyntaxError("a second device " + name_);
      }
    } else if (!isCase && word == "context") {
      startContext(rest);
    } else if (!isCase && word == "in") {
      if (!setups_->contexts.contains(std::string(rest))) {
        throw CaseSyntaxError("no context " + std::string(rest));
      }
      block_ = Block::None;
      context_ = rest;
    } else {
      startCase(line);
    }
  }

  void importFile(const std::string& name) {
    block_ = Block::None;
    const std::optional<std::string> text = contentOf(folder_ + "/" + name);
    if (!text) throw CaseSyntaxError("cannot read " + name);
    for (Case& found : Reader(name, folder_, setups_).read(*text)) {
      if (found.problem.empty()) found.problem = "a case in an imported file";
      cases_.push_back(std::move(found));
    }
  }

  void startContext(std::string_view rest) {
    using Kind = ContextSetup::Kind;
    constexpr std::pair<std::string_view, Kind> kKinds[] = {
        {"base", Kind::Base}, {"single", Kind::Single},       {"array", Kind::Array},
        {"walk", Kind::Walk}, {"aggregate", Kind::Aggregate}, {"macro", Kind::Macro}};
    const auto [name, kindName] = firstWordOf(rest);
    const auto* kind =
        std::ranges::find(kKinds, kindName, [](const auto& row) { return row.first; });
    if (kind == std::end(kKinds))
      throw CaseSyntaxError("no kind of context: " + std::string(kindName));
    block_ = Block::Context;
    name_ = name;
    ContextSetup setup;
    setup.name = name_;
    setup.kind = kind->second;
    if (!setups_->contexts.emplace(name_, std::move(setup)).second) {
      throw CaseSyntaxError("a second context " + name_);
    }
  }

  void startCase(const CaseLine& line) {
    block_ = Block::Case;
    Case started;
    started.file = file_;
    started.path = folder_ + "/" + file_;
    started.line = line.number;
    started.setups = setups_;
    started.context = context_;
    std::string_view text = line.text;
    std::size_t arrow = 0;
    if (text.starts_with('`')) {
      const std::size_t end = closingQuote(text, 0, '`');
      started.escaped = true;
      started.text = text.substr(1, end - 1);
      checkEscapes(started.text);
      text.remove_prefix(end + 1);
      arrow = arrowIn(text, 0);
      if (!stripped(text.substr(0, arrow)).empty()) {
        throw CaseSyntaxError("no => behind the expression");
      }
    } else {
      arrow = arrowIn(text, 0);
      started.text = stripped(text.substr(0, arrow));
    }
    current_ = std::move(started);
    hasValue_ = false;
    if (arrow != std::string_view::npos) readOutcome(text.substr(arrow + kArrow.size()));
  }

  // A value, and an error behind a comma.
  void readOutcome(std::string_view text) {
    if (hasValue_) throw CaseSyntaxError("a second value");
    current_->value = Notation::read(text);
    hasValue_ = true;
    text = stripped(text);
    if (text.empty()) return;
    if (!text.starts_with(',')) throw CaseSyntaxError("more than a value: " + std::string(text));
    current_->error = errorOf(stripped(text.substr(1)));
  }

  // What is written, with escapes when it stands between backquotes.
  static std::string detailOf(std::string_view text) {
    if (text.size() > 1 && text.starts_with('`') && text.ends_with('`')) {
      return withoutEscapes(text.substr(1, text.size() - 2));
    }
    return std::string(text);
  }
  static std::string errorOf(std::string_view text) {
    std::string error = detailOf(text);
    if (!error.starts_with("Error ")) throw CaseSyntaxError("no error: " + error);
    return error;
  }

  void finishCase() {
    if (!current_) return;
    Case finished = std::move(*current_);
    current_.reset();
    if (broken_) return;
    if (!hasValue_) {
      complain(finished.line, "no expected value");
      return;
    }
    cases_.push_back(std::move(finished));
  }

  void readDetail(std::string_view text) {
    if (broken_) return;
    switch (block_) {
      case Block::Device:
        readFact(text);
        break;
      case Block::Context:
        readContextDetail(text);
        break;
      case Block::Case:
        readCaseDetail(text);
        break;
      case Block::None:
        throw CaseSyntaxError("an indented line that belongs to nothing");
    }
  }

  void readFact(std::string_view text) {
    const auto [subject, value] = sidesOf(text);
    DeviceFacts& device = setups_->devices.at(name_);
    if (subject.starts_with('{') || subject.starts_with('[')) {
      device.features.emplace_back(pathOf(subject), Notation::readWhole(value));
    } else {
      device.messages.emplace(subject, Notation::readWhole(value));
    }
  }

  void readContextDetail(std::string_view text) {
    ContextSetup& setup = setups_->contexts.at(name_);
    const auto [word, rest] = firstWordOf(text);
    const auto addTo = [rest = rest](ContextSetup::Names& names) {
      const auto [name, value] = sidesOf(rest);
      names.emplace_back(nameOf(name), Notation::readWhole(value));
    };
    if (word == "device") {
      setup.device = rest;
      if (!setups_->devices.contains(setup.device)) {
        throw CaseSyntaxError("no device " + setup.device);
      }
    } else if (word == "named") {
      const auto [name, device] = sidesOf(rest);
      if (!setups_->devices.contains(std::string(device))) {
        throw CaseSyntaxError("no device " + std::string(device));
      }
      setup.services.emplace_back(nameOf(name), device);
    } else if (word == "parent") {
      setup.parent = rest;
      if (!setups_->contexts.contains(setup.parent)) {
        throw CaseSyntaxError("no context " + setup.parent);
      }
    } else if (word == "service") {
      setup.service = Notation::readWhole(rest);
    } else if (word == "list") {
      setup.list = Notation::readWhole(rest);
    } else if (word == "at") {
      setup.at = wholeNumber(rest);
    } else if (word == "initial") {
      setup.initial = Notation::readWhole(rest);
    } else if (word == "argument") {
      setup.arguments.emplace_back(rest);
    } else if (word == "constant") {
      addTo(setup.constants);
    } else if (word == "value") {
      addTo(setup.values);
    } else if (word == "input") {
      addTo(setup.input);
    } else if (word == "macro") {
      const auto [name, expression] = sidesOf(rest);
      // The notation of a text has escapes; an expression has none.
      const std::string body = inQuotes(expression);
      setup.macros.emplace_back(nameOf(name), stringNotation(body.substr(1, body.size() - 2)));
    } else {
      throw CaseSyntaxError("no part of a context: " + std::string(word));
    }
  }

  void readCaseDetail(std::string_view text) {
    const auto [word, rest] = firstWordOf(text);
    if (word == kArrow) {
      readOutcome(rest);
    } else if (word == "Error" || word == "`Error") {
      current_->error = errorOf(text);
    } else if (word == "parent") {
      current_->parentError = errorOf(rest);
    } else if (word == "tokens") {
      current_->tokens = detailOf(rest);
    } else if (word == "tree") {
      current_->tree = detailOf(rest);
    } else if (word == "calls") {
      current_->calls = detailOf(rest);
    } else if (word == "where") {
      current_->where = detailOf(rest);
    } else {
      throw CaseSyntaxError("nothing that a case can have: " + std::string(word));
    }
  }

  std::string file_;
  std::string folder_;
  std::shared_ptr<Setups> setups_;
  std::vector<Case> cases_;
  Block block_ = Block::None;
  // Of the device or context that is being read.
  std::string name_;
  std::string context_;
  std::optional<Case> current_;
  bool hasValue_ = false;
  // The rest of what could not be read says nothing more.
  bool broken_ = false;
};

std::vector<Case> casesOfContent(const std::string& path, std::string (*convert)(std::string)) {
  const fs::path location(path);
  const std::optional<std::string> text = contentOf(path);
  if (!text) {
    Case missing;
    missing.file = location.filename().string();
    missing.path = path;
    missing.problem = "cannot read " + path;
    return {std::move(missing)};
  }
  return casesOfText(location.filename().string(), convert(*text), location.parent_path().string());
}

}  // namespace

std::string Case::expression() const { return escaped ? withoutEscapes(text) : text; }

std::vector<Case> casesOfText(const std::string& file, std::string_view text,
                              const std::string& folder) {
  auto setups = std::make_shared<Setups>();
  // The context of cases that name none.
  setups->contexts.emplace("", ContextSetup());
  return Reader(file, folder, std::move(setups)).read(text);
}

std::vector<Case> casesOfFile(const std::string& path) {
  return casesOfContent(path, [](std::string text) { return text; });
}

std::vector<Case> casesOfMarkdown(const std::string& path) {
  return casesOfContent(path, [](std::string text) { return examplesOf(text); });
}

std::vector<Case> casesOfFolder(const std::string& folder) {
  std::vector<std::string> paths;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() == ".cases") paths.push_back(entry.path().string());
  }
  std::ranges::sort(paths);
  std::vector<Case> cases;
  for (const std::string& path : paths)
    std::ranges::move(casesOfFile(path), std::back_inserter(cases));
  return cases;
}

}  // namespace commandfilter::testing
