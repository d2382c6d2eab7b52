// What the filter sends a device when there is nothing to print.
#pragma once

#include <string>

namespace commandfilter::testing {

/// For devices that understand LDL.
inline const std::string kPacket("\x24\x00\x10\x00\x00\x07\x00\x01\x00\x00\x00\xFF\xFF\xFF\xFF\x24",
                                 16);
/// For any other device.
inline const std::string kZeros(1024, '\0');

}  // namespace commandfilter::testing
