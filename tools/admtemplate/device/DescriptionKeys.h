// Keys of device descriptions.
#pragma once

#include <string>
#include <vector>

#include "runtime/Dictionary.h"

namespace commandfilter::tools {

/// The keys that no device model looks for, each as a sentence with its way and a remedy; of very
/// many, the first. Names that a description is free to choose, as of messages, are none of them.
/// The types are the device model's affair.
[[nodiscard]] std::vector<std::string> ignoredKeys(const Dictionary& description);

}  // namespace commandfilter::tools
