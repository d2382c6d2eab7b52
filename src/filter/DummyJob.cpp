#include "filter/DummyJob.h"

#include <array>
#include <string>

#include "runtime/String.h"

namespace commandfilter {

namespace {

// An LDL packet that asks for nothing: the third byte is its own length.
constexpr std::array<char, 16> kPacket{
    '\x24', '\x00', '\x10', '\x00', '\x00', '\x07', '\x00', '\x01',
    '\x00', '\x00', '\x00', '\xFF', '\xFF', '\xFF', '\xFF', '\x24',
};
constexpr std::array<char, 1024> kZeros{};

}  // namespace

std::string_view dummyJobForLanguages(const Array* languages) {
  const bool speaksLDL = languages != nullptr && languages->containsObject(String::create("LDL"));
  if (speaksLDL) return {kPacket.data(), kPacket.size()};
  return {kZeros.data(), kZeros.size()};
}

}  // namespace commandfilter
