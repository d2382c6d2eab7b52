// The text of a value, as "%@" writes it.
#pragma once

#include <string>
#include <string_view>

#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// How many collections inside each other a description may show.
inline constexpr int kDescriptionDepth = 1024;

/// Appends the text of a value: nil as `(null)`, the null object as `<null>`, a number's digits, a
/// string itself, a collection in the old property-list form. `level` is how many collections the
/// value stands in.
/// @throws Exception when the value is nested deeper than kDescriptionDepth or the stack allows.
COMMANDFILTER_EXPORT void appendDescription(std::string& text, const Value& value, int level = 0);

/// The text of a value.
[[nodiscard]] COMMANDFILTER_EXPORT std::string descriptionOf(const Value& value);
/// The text of a value as a string; a string gives itself.
[[nodiscard]] COMMANDFILTER_EXPORT Ref<String> describe(const Value& value);

/// Appends the blanks that begin a line inside `level` collections.
/// @throws Exception when these are more than kDescriptionDepth.
COMMANDFILTER_EXPORT void appendIndentation(std::string& text, int level);
/// Appends a string as it stands inside a collection: in double quotes with escapes, unless it is
/// made only of A-Z a-z 0-9 _ $ / : and full stop and is not empty.
COMMANDFILTER_EXPORT void appendQuoted(std::string& text, std::string_view string);

}  // namespace commandfilter
