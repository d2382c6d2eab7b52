// The harmless bytes that end every run.
#pragma once

#include <string_view>

#include "runtime/Array.h"

namespace commandfilter {

/// The dummy job for a printer that understands the languages (strings; nil for none): an LDL
/// packet of 16 bytes when "LDL" is among them, otherwise 1024 zero bytes.
[[nodiscard]] std::string_view dummyJobForLanguages(const Array* languages);

}  // namespace commandfilter
