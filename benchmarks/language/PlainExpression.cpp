#include "PlainExpression.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <stdexcept>
#include <utility>

namespace commandfilter::benchmarks {

namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view word(std::string_view text, std::size_t at) {
  std::size_t end = at;
  while (end < text.size() && isLetter(text[end])) ++end;
  return text.substr(at, end - at);
}

// The value of a path as it is written: {Name}[Key] or {Name}.part.
const Datum& valueAt(const Datum& device, std::string_view path) {
  const Datum* value = &device;
  std::size_t at = 0;
  while (at < path.size()) {
    if (!isLetter(path[at])) {
      ++at;
      continue;
    }
    const std::string_view name = word(path, at);
    at += name.size();
    const auto& map = std::get<Datum::Map>(value->content);
    const auto found = std::ranges::find_if(map, [name](const auto& entry) {
      return std::get<std::string>(entry.first.content) == name;
    });
    if (found == map.end()) throw std::runtime_error("no value at " + std::string(path));
    value = &found->second;
  }
  return *value;
}

std::string textOf(const Datum& datum) {
  if (const auto* text = std::get_if<std::string>(&datum.content)) return *text;
  return std::to_string(std::get<std::int64_t>(datum.content));
}

// An operand in evaluation: a value, or the outcome of a comparison.
struct Operand {
  Datum value;
  std::optional<bool> truth;

  bool isFalse() const { return truth ? !*truth : value == Datum(); }
};

}  // namespace

PlainExpression::PlainExpression(std::string_view text) {
  constexpr std::size_t kCharactersPerNode = 8;
  nodes_.reserve(text.size() / kCharactersPerNode);
  for (std::size_t at = 0; at < text.size();) {
    const char c = text[at];
    if (c == ' ') {
      ++at;
    } else if (c == '(') {
      operators_.push_back(Kind::Brace);
      ++at;
    } else if (c == ')') {
      closeBrace();
      ++at;
    } else if (c == '+') {
      push(Kind::Concatenate);
      ++at;
    } else if (c == '&') {
      push(Kind::And);
      ++at;
    } else if (isLetter(c)) {
      const std::string_view name = word(text, at);
      push(name == "eq"     ? Kind::Equal
           : name == "gt"   ? Kind::Greater
           : name == "then" ? Kind::And
                            : Kind::Or);
      at += name.size();
    } else {
      readOperand(text, at);
    }
  }
  while (!operators_.empty()) {
    nodes_.push_back({operators_.back(), {}});
    operators_.pop_back();
  }
}

void PlainExpression::readOperand(std::string_view text, std::size_t& at) {
  const std::size_t begin = at;
  if (text[at] == '"') {
    at = text.find('"', begin + 1) + 1;
    nodes_.push_back({Kind::Text, text.substr(begin + 1, at - begin - 2)});
  } else if (text[at] == '{') {
    at = text.find('}', begin) + 1;
    if (at < text.size() && text[at] == '[') at = text.find(']', at) + 1;
    while (at < text.size() && (text[at] == '.' || isLetter(text[at]))) ++at;
    nodes_.push_back({Kind::Path, text.substr(begin, at - begin)});
  } else if (isDigit(text[at])) {
    Node node{Kind::Number, {}};
    const auto end = std::from_chars(text.data() + at, text.data() + text.size(), node.number);
    at = static_cast<std::size_t>(end.ptr - text.data());
    nodes_.push_back(node);
  } else {
    throw std::runtime_error("not a part of the plain language: " + std::string(text.substr(at)));
  }
}

void PlainExpression::push(Kind kind) {
  while (!operators_.empty() && operators_.back() >= kind) {
    nodes_.push_back({operators_.back(), {}});
    operators_.pop_back();
  }
  operators_.push_back(kind);
}

void PlainExpression::closeBrace() {
  while (operators_.back() != Kind::Brace) {
    nodes_.push_back({operators_.back(), {}});
    operators_.pop_back();
  }
  operators_.pop_back();
}

Datum PlainExpression::evaluate(const Datum& device) const {
  std::vector<Operand> stack;
  for (const Node& node : nodes_) {
    if (node.kind == Kind::Text) {
      stack.push_back({std::string(node.text), {}});
    } else if (node.kind == Kind::Number) {
      stack.push_back({node.number, {}});
    } else if (node.kind == Kind::Path) {
      stack.push_back({valueAt(device, node.text), {}});
    } else {
      const Operand right = std::move(stack.back());
      stack.pop_back();
      Operand& left = stack.back();
      if (node.kind == Kind::Equal) {
        left = {{}, left.value == right.value};
      } else if (node.kind == Kind::Greater) {
        left = {{},
                std::get<std::int64_t>(left.value.content) >
                    std::get<std::int64_t>(right.value.content)};
      } else if (node.kind == Kind::Concatenate) {
        left = {textOf(left.value) + textOf(right.value), {}};
      } else if (node.kind == Kind::And) {
        if (!left.isFalse()) left = right;
      } else if (left.isFalse()) {
        left = right;
      }
    }
  }
  return stack.back().value;
}

}  // namespace commandfilter::benchmarks
