#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "comparison/Datum.h"

namespace commandfilter::benchmarks {

// The part of the language that the compiled expressions use, in plain C++: operands and operators
// in postfix order, which refer to the text. What the engine does beyond that (items that live on
// their own, places in the source, any text without a crash) is what it pays for.
class PlainExpression {
 public:
  explicit PlainExpression(std::string_view text);

  // Whether both sides of a conditional are evaluated makes no difference to these expressions.
  Datum evaluate(const Datum& device) const;

 private:
  enum class Kind : std::uint8_t {
    Text,
    Number,
    Path,
    Brace,
    Or,
    And,
    Equal,
    Greater,
    Concatenate
  };
  struct Node {
    Kind kind;
    std::string_view text;
    std::int64_t number = 0;
  };

  void readOperand(std::string_view text, std::size_t& at);
  void push(Kind kind);
  void closeBrace();

  std::vector<Node> nodes_;
  std::vector<Kind> operators_;
};

}  // namespace commandfilter::benchmarks
