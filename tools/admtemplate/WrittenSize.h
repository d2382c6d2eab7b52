// How large a value is once it is written out.
#pragma once

#include "runtime/Value.h"

namespace commandfilter::tools {

/// Refuses a value that no report can hold: one that is nested deeper than a property list may be,
/// or, written out, has more than a few million parts or a quarter of a gigabyte of text. Parts
/// that a value holds several times count each time, but are looked at once.
/// @throws Exception with the reason.
void requireWritable(const Value& value);

}  // namespace commandfilter::tools
