// The names that contexts answer themselves.
#pragma once

#include <cstdint>

namespace commandfilter {

/// What a bare name is to the contexts that know it; found when the name is compiled, so that an
/// evaluation compares no texts. To a context that does not know a symbol it is a name like any
/// other.
enum class EvaluationSymbol : std::uint8_t {
  /// No context's own.
  None,
  /// nil, service, true, false: every context's.
  Nil,
  Service,
  True,
  False,
  /// element, identifier, index, initial: those of lists.
  Element,
  Identifier,
  Index,
  Initial,
  /// arg0, arg1 and so on, argc, argv, and what else begins with arg: those of macros.
  Argument,
  ArgumentCount,
  ArgumentList,
  NoArgument,
};

}  // namespace commandfilter
