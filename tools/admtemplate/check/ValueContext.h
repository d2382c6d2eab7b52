// The context that a value's expressions get.
#pragma once

#include <string>
#include <string_view>

#include "check/Finding.h"
#include "runtime/Class.h"

namespace commandfilter::tools {

/// The class of a context, and what is wrong with the choice.
struct ValueContext {
  const Class* info;
  Severity severity = Severity::Warning;
  /// Empty when nothing is wrong.
  std::string message;
  std::string remedy;
};

/// The context of a value: the class of that name, or the usual one when the name is empty or no
/// class has it.
[[nodiscard]] ValueContext contextOfValue(std::string_view className, bool hasRange);

}  // namespace commandfilter::tools
