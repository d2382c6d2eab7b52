#include "integration/devices/LoopbackAddress.h"

#include <unistd.h>

namespace commandfilter::testing {

std::string loopbackAddress() {
  constexpr unsigned kFirst = 64;
  constexpr unsigned kByte = 256;
  const auto number = static_cast<unsigned>(getpid());
  return "127." + std::to_string(kFirst + number / kByte / kByte % kFirst) + "." +
         std::to_string(number / kByte % kByte) + "." + std::to_string(number % kByte);
}

}  // namespace commandfilter::testing
