// Addresses for devices of a test's own.
#pragma once

#include <string>

namespace commandfilter::testing {

/// An IPv4 address of this machine's loopback network that no server of the system uses, nor, as
/// far as the process's number tells, another test.
[[nodiscard]] std::string loopbackAddress();

}  // namespace commandfilter::testing
