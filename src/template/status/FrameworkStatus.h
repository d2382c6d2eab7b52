// The status objects of the device-model framework.
#pragma once

#include "runtime/Protocol.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The framework's object that conforms to the protocol, for the device; nil when the framework is
/// missing, makes no status, or has none of that kind.
[[nodiscard]] Value frameworkStatus(const Protocol& protocol, const Value& serviceInfo);

}  // namespace commandfilter
