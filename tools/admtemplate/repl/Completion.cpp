#include "repl/Completion.h"

#include <algorithm>
#include <array>

#include "repl/Commands.h"

namespace commandfilter::tools {

namespace {

constexpr std::size_t kNowhere = std::string_view::npos;

bool belongsToName(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80U;
}

Completion choose(std::string_view text, std::size_t begin, std::vector<std::string> words,
                  std::string closing = {}) {
  const std::string_view typed = text.substr(begin);
  std::erase_if(words, [typed](const std::string& word) { return !word.starts_with(typed); });
  std::ranges::sort(words);
  words.erase(std::unique(words.begin(), words.end()), words.end());
  return {begin, std::move(words), std::move(closing)};
}

// Where the last text that is still open begins, behind its quote.
std::size_t openQuote(std::string_view text) {
  if (std::ranges::count(text, '"') % 2 == 0) return kNowhere;
  return text.rfind('"') + 1;
}

std::size_t openBracket(std::string_view text, char opening, char closing) {
  const std::size_t found = text.rfind(opening);
  if (found == kNowhere || text.find(closing, found) != kNowhere) return kNowhere;
  return found + 1;
}

// The feature of a path that ends the text: {Name}, {Name}[key] or {Name}.property.
std::string featureAtEnd(std::string_view text) {
  const std::size_t end = text.rfind('}');
  const std::size_t begin = end == kNowhere ? kNowhere : text.rfind('{', end);
  if (begin == kNowhere) return {};
  std::string_view rest = text.substr(end + 1);
  if (rest.starts_with('[')) rest.remove_prefix(std::min(rest.find(']'), rest.size() - 1) + 1);
  const bool isPath =
      std::ranges::all_of(rest, [](char c) { return c == '.' || belongsToName(c); });
  return isPath ? std::string(text.substr(begin + 1, end - begin - 1)) : std::string();
}

// A text is only completed where it is a key.
Completion completeText(std::string_view text, std::size_t begin, const Vocabulary& vocabulary) {
  std::string_view call = text.substr(0, begin - 1);
  while (call.ends_with(' ')) call.remove_suffix(1);
  if (call.ends_with("_InputValue(") || call.ends_with("_InputValue")) {
    return choose(text, begin, vocabulary.inputs(), "\"");
  }
  if (call.ends_with("_TemplateValue(") || call.ends_with("_TemplateValue")) {
    return choose(text, begin, vocabulary.values(), "\"");
  }
  if (call.ends_with("_External(") || call.ends_with("_External")) {
    return choose(text, begin, Vocabulary::externals(), "\"");
  }
  if (call.ends_with("_Service(") || call.ends_with("_Service")) {
    return choose(text, begin, vocabulary.services(), "\"");
  }
  return {text.size(), {}, {}};
}

std::vector<std::string> withSign(char sign, std::vector<std::string> words) {
  for (std::string& word : words) word.insert(word.begin(), sign);
  return words;
}

Completion completeCommand(std::string_view text, const Vocabulary& vocabulary) {
  const std::size_t blank = text.find(' ');
  if (blank == kNowhere) return choose(text, 0, commandWords(), " ");
  const std::string_view command = text.substr(0, blank);
  const std::size_t begin = std::min(text.find_first_not_of(' ', blank), text.size());
  if (command == ":value") return choose(text, begin, vocabulary.values());
  if (command == ":service") return choose(text, begin, vocabulary.services());
  if (!takesExpression(command)) return {text.size(), {}, {}};
  Completion completion = complete(text.substr(begin), vocabulary);
  completion.begin += begin;
  return completion;
}

}  // namespace

Completion complete(std::string_view text, const Vocabulary& vocabulary) {
  if (text.starts_with(':')) return completeCommand(text, vocabulary);
  if (const std::size_t begin = openQuote(text); begin != kNowhere) {
    return completeText(text, begin, vocabulary);
  }
  if (const std::size_t begin = openBracket(text, '{', '}'); begin != kNowhere) {
    return choose(text, begin, vocabulary.features(), "}");
  }
  if (const std::size_t begin = openBracket(text, '[', ']'); begin != kNowhere) {
    const std::string feature = featureAtEnd(text.substr(0, begin - 1));
    const bool isKey = begin >= 2 && text[begin - 2] == '}';
    return choose(text, begin, isKey ? vocabulary.identifiers(feature) : vocabulary.values(), "]");
  }
  std::size_t begin = text.size();
  while (begin > 0 && (belongsToName(text[begin - 1]) || text[begin - 1] == ':')) --begin;
  if (begin > 0 && text[begin - 1] == '.') {
    return choose(text, begin, vocabulary.properties(featureAtEnd(text.substr(0, begin))));
  }
  if (begin > 0 && text[begin - 1] == '$') return choose(text, begin, vocabulary.constants());
  if (begin > 0 && text[begin - 1] == '@') return choose(text, begin, vocabulary.names());
  if (begin < text.size() && text[begin] == '_') {
    std::vector<std::string> words = withSign('_', Vocabulary::procedures());
    for (std::string& word : withSign('_', vocabulary.macros())) words.push_back(std::move(word));
    return choose(text, begin, std::move(words), "(");
  }
  return {text.size(), {}, {}};
}

std::string commonBeginning(const std::vector<std::string>& words) {
  if (words.empty()) return {};
  std::string common = words.front();
  for (const std::string& word : words) {
    const auto [end, other] = std::ranges::mismatch(common, word);
    common.erase(end, common.end());
  }
  return common;
}

}  // namespace commandfilter::tools
