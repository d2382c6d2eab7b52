// A token of an expression.
#pragma once

#include <cstddef>

#include "evaluation/protocol/SourceRange.h"
#include "expression/ItemType.h"

namespace commandfilter {

/// What the lexer has read of an item before the item is made; places are 16-bit code units of the
/// expression.
struct Token {
  /// What the item is.
  ItemType type = ItemType::StartOfExpression;
  /// True for a procedure that is called in member form.
  bool isMemberCall = false;
  /// The whole token, without what ended it.
  SourceRange range;
  /// What the token says: a name, a text, digits; of a feature path what stands between the braces.
  SourceRange content;
};

}  // namespace commandfilter
