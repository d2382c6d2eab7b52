#pragma once

#include <array>
#include <string_view>

#include "comparison/Datum.h"

namespace commandfilter::benchmarks {

inline constexpr std::array<std::string_view, 8> kSupplyNames{
    "Black", "Cyan", "Magenta", "Yellow", "LightCyan", "LightMagenta", "Waste", "Fuser"};
inline constexpr int kTrays = 4;

// A printer with eight supplies and four trays: what it answers to messages about its supplies,
// and its features (feature to property to value, or to a value for each identifier).
struct StatusDevice {
  Datum messages;
  Datum features;
};
StatusDevice statusDevice();

// The device as the description that the device model reads.
Datum deviceDescription(const StatusDevice& device);
// The device as the Lua program holds it: its messages and features, without what the description
// needs around them.
Datum luaDevice(const StatusDevice& device);

}  // namespace commandfilter::benchmarks
