// Texts as one.
#pragma once

#include <span>

#include "runtime/Export.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter {

/// A text and those that follow it as one string. The first is extended in place when `left` holds
/// the only reference to it, so that building a text piece by piece costs linear time.
/// @throws Exception "a value is too large" when together they would be larger than a text may be.
[[nodiscard]] COMMANDFILTER_EXPORT Ref<String> concatenateTexts(
    Ref<String> left, std::span<const String* const> others);

}  // namespace commandfilter
