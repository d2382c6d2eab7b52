#include "template/TemplateCaseFile.h"

#include <algorithm>
#include <filesystem>

#include "language/CaseLines.h"
#include "language/CaseText.h"
#include "language/MarkdownTables.h"
#include "support/File.h"

namespace commandfilter::testing {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kArrow = " => ";

struct Sides {
  std::string left;
  std::string_view right;
};

// The two sides of "left = right", or of another separator.
Sides sidesOf(std::string_view text, std::string_view separator) {
  const std::size_t at = text.find(separator);
  if (at == std::string_view::npos) throw CaseSyntaxError("neither name nor value");
  std::string left(stripped(text.substr(0, at)));
  if (left.starts_with('"')) left = withoutEscapes(Notation::readWhole(left).text);
  return {std::move(left), stripped(text.substr(at + separator.size()))};
}

// A text as it stands: the notation of a text has escapes, an expression has none.
Notation plainText(std::string_view text) {
  const std::string escaped = inQuotes(text);
  return {.kind = Notation::Kind::String, .text = escaped.substr(1, escaped.size() - 2)};
}

// "key = text" or "key: value".
std::pair<std::string, Notation> entryOf(std::string_view text) {
  const std::size_t equals = std::min(text.find(" ="), text.size());
  const std::size_t colon = std::min(text.find(": "), text.size());
  if (colon < equals) {
    const Sides sides = sidesOf(text, ": ");
    return {sides.left, Notation::readWhole(sides.right)};
  }
  const Sides sides = sidesOf(text, " =");
  return {sides.left, plainText(sides.right)};
}

class Reader {
 public:
  explicit Reader(std::string path) : path_(std::move(path)) {}

  std::vector<TemplateCase> read(std::string_view text) {
    for (const CaseLine& line : linesOf(text)) {
      try {
        if (line.indented) {
          readDetail(line.text);
        } else {
          readStart(line);
        }
      } catch (const CaseSyntaxError& error) {
        complain(line.number, error.what());
      }
    }
    for (TemplateCase& read : cases_) read.devices = devices_;
    return std::move(cases_);
  }

 private:
  enum class Block { None, Device, Template, Step };

  void complain(std::size_t line, const std::string& what) {
    if (cases_.empty()) startTemplate("", line);
    cases_.back().problem.append(std::to_string(line) + ": " + what + "\n");
  }

  void startTemplate(std::string_view name, std::size_t line) {
    block_ = Block::Template;
    TemplateCase started;
    started.file = fs::path(path_).filename().string();
    started.path = path_;
    started.line = line;
    started.name = name;
    cases_.push_back(std::move(started));
  }

  void readStart(const CaseLine& line) {
    const auto [word, rest] = firstWordOf(line.text);
    const bool isCase = line.text.find(kArrow) != std::string::npos;
    if (!isCase && word == "device") {
      block_ = Block::Device;
      device_ = rest;
      (*devices_)[device_].name = device_;
    } else if (!isCase && word == "template") {
      startTemplate(rest, line.number);
    } else if (cases_.empty()) {
      throw CaseSyntaxError("a case without a template");
    } else {
      startStep(line);
    }
  }

  void startStep(const CaseLine& line) {
    using Kind = TemplateStep::Kind;
    block_ = Block::Step;
    TemplateStep step;
    step.line = line.number;
    if (line.text == "new session") {
      step.kind = Kind::Session;
    } else if (line.text == "new session with services") {
      step.kind = Kind::SessionWithServices;
    } else {
      const Sides sides = sidesOf(line.text, kArrow);
      step.key = sides.left;
      if (line.text.starts_with("errors ")) step.kind = Kind::Errors;
      if (line.text.starts_with("all ")) step.kind = Kind::All;
      if (line.text.starts_with("constant errors ")) step.kind = Kind::ConstantErrors;
      std::string_view outcome = sides.right;
      step.value = Notation::read(outcome);
      outcome = stripped(outcome);
      if (outcome.starts_with(", Error ")) {
        step.error = outcome.substr(2);
      } else if (!outcome.empty()) {
        throw CaseSyntaxError("more than a value: " + std::string(outcome));
      }
    }
    cases_.back().steps.push_back(std::move(step));
  }

  void readDetail(std::string_view text) {
    if (block_ == Block::Device) {
      const Sides sides = sidesOf(text, " = ");
      (*devices_)[device_].messages.emplace(sides.left, Notation::readWhole(sides.right));
    } else if (block_ == Block::Template) {
      readTemplateDetail(text);
    } else if (block_ == Block::Step) {
      readStepDetail(text);
    } else {
      throw CaseSyntaxError("an indented line that belongs to nothing");
    }
  }

  void readTemplateDetail(std::string_view text) {
    TemplateCase& current = cases_.back();
    const auto [word, rest] = firstWordOf(text);
    if (text == "no services") {
      current.servicesAvailable = false;
    } else if (word == "constant") {
      current.constants.push_back(entryOf(rest));
    } else if (word == "macro") {
      current.macros.push_back(entryOf(rest));
    } else if (word == "section") {
      current.sections.push_back(entryOf(rest));
    } else if (word == "input") {
      const Sides sides = sidesOf(rest, " = ");
      current.input.emplace_back(sides.left, Notation::readWhole(sides.right));
    } else if (word == "value") {
      startValue(current, rest);
    } else {
      if (current.values.empty()) throw CaseSyntaxError("no part of a template");
      addTo(current.values.back().second, entryOf(text));
    }
  }

  static void startValue(TemplateCase& current, std::string_view text) {
    Notation description{.kind = Notation::Kind::Dictionary};
    const std::size_t colon = text.find(": ");
    const std::size_t equals = text.find(" = ");
    if (equals != std::string_view::npos && equals < colon) {
      const Sides sides = sidesOf(text, " = ");
      addTo(description, {"Value", plainText(sides.right)});
      current.values.emplace_back(sides.left, std::move(description));
    } else if (colon != std::string_view::npos) {
      current.values.push_back(entryOf(text));
    } else {
      current.values.emplace_back(text, std::move(description));
    }
  }

  static void addTo(Notation& dictionary, const std::pair<std::string, Notation>& entry) {
    dictionary.elements.push_back(plainText(entry.first));
    dictionary.elements.push_back(entry.second);
  }

  void readStepDetail(std::string_view text) {
    TemplateStep& step = cases_.back().steps.back();
    const auto [word, rest] = firstWordOf(text);
    if (word == "Error") {
      step.error = text;
    } else if (word == "calls") {
      step.calls = rest;
    } else if (word == "where") {
      step.where = rest;
    } else {
      throw CaseSyntaxError("nothing that a case can have: " + std::string(word));
    }
  }

  std::string path_;
  std::vector<TemplateCase> cases_;
  std::shared_ptr<std::map<std::string, DeviceFacts>> devices_ =
      std::make_shared<std::map<std::string, DeviceFacts>>();
  Block block_ = Block::None;
  std::string device_;
};

}  // namespace

std::vector<TemplateCase> templateCasesOfText(const std::string& path, std::string_view text) {
  return Reader(path).read(text);
}

std::vector<TemplateCase> templateCasesOfFolder(const std::string& folder) {
  std::vector<std::string> paths;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() == ".cases") paths.push_back(entry.path().string());
  }
  std::ranges::sort(paths);
  std::vector<TemplateCase> cases;
  for (const std::string& path : paths) {
    std::ranges::move(templateCasesOfText(path, readFile(path)), std::back_inserter(cases));
  }
  return cases;
}

std::vector<TemplateCase> templateCasesOfMarkdown(const std::string& path) {
  return templateCasesOfText(path, examplesOf(readFile(path)));
}

}  // namespace commandfilter::testing
