// A compiled expression for people to read.
#pragma once

#include <string>

#include "expression/ADMEvaluationItemBase.h"

namespace commandfilter::tools {

/// The tree as an expression with all braces written out, and below it an item a line, each to the
/// right of what it belongs to.
/// @throws Exception when the tree is deeper than the stack allows.
[[nodiscard]] std::string treeText(const ADMEvaluationItemBase& root);

}  // namespace commandfilter::tools
