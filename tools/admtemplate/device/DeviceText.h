// A device for people to read.
#pragma once

#include <string>

#include "runtime/Dictionary.h"

namespace commandfilter::tools {

/// A device description as text: what the device is, then each service with its messages and
/// features as expressions write them, and their values.
[[nodiscard]] std::string deviceText(const Dictionary& description);

}  // namespace commandfilter::tools
