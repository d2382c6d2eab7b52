// What an expression refers to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "check/Tokens.h"
#include "evaluation/protocol/SourceRange.h"
#include "expression/ADMEvaluationItemBase.h"
#include "runtime/Class.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter::tools {

/// A reference of an expression to something outside of it, or a part that can have no value.
struct Reference {
  enum class Kind : std::uint8_t {
    Constant,
    Value,
    /// A bare name.
    Name,
    /// A feature path.
    Path,
    /// A procedure or a macro.
    Call,
    /// Empty braces, or a closing one, in the place of an operand.
    NoValue,
    /// A list in front of a procedure.
    ListReceiver,
    /// Empty braces in front of a procedure.
    EmptyReceiver,
  };

  Kind kind;
  SourceRange range;
  /// What it names; nil for what has no name.
  RefPtr<String> name;
  /// The class of the context that evaluates it; nullptr when the expression is broken, so that it
  /// can be any.
  const Class* context = nullptr;
  /// True when every evaluation of the expression evaluates it.
  bool isCertain = false;
  /// True where nil makes sense: the expression asks whether there is a value, or hands it on.
  bool mayBeNil = false;

  /// The number of arguments of a call; none when it is not known.
  std::optional<std::size_t> argumentCount;
  /// The first two arguments of a call when they are texts; otherwise nil.
  RefPtr<String> firstText;
  RefPtr<String> secondText;
};

/// The references of a tree, in no particular order. `context` is the class of the context that
/// evaluates it.
[[nodiscard]] std::vector<Reference> referencesOf(const ADMEvaluationItemBase& root,
                                                  const Class& context);

/// The references of an expression that does not compile, as far as its tokens show them.
[[nodiscard]] std::vector<Reference> referencesOf(const Tokens& tokens);

}  // namespace commandfilter::tools
