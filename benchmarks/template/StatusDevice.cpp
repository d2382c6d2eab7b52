#include "StatusDevice.h"

#include <cstdint>
#include <string>
#include <utility>

namespace commandfilter::benchmarks {

namespace {

const Datum::Map& mapOf(const Datum& datum) { return std::get<Datum::Map>(datum.content); }

Datum supplyIdentifiers() {
  Datum::List list;
  for (const std::string_view name : kSupplyNames) list.emplace_back(std::string(name));
  return list;
}

// A value for each supply.
template <typename Make>
Datum forSupplies(Make&& make) {
  Datum::Map map;
  for (std::size_t i = 0; i < kSupplyNames.size(); ++i) {
    map.emplace_back(std::string(kSupplyNames[i]), make(i));
  }
  return map;
}

template <typename Make>
Datum forTrays(Make&& make) {
  Datum::Map map;
  for (int tray = 1; tray <= kTrays; ++tray) map.emplace_back(std::to_string(tray), make(tray));
  return map;
}

Datum level(std::size_t supply) {
  constexpr std::array kLevels{64, 12, 88, 3, 51, 19, 72, 97};
  return kLevels[supply];
}

// What a feature path ends in: a value, or one for each identifier.
Datum describedProperties(const Datum& properties) {
  Datum::Map described;
  for (const auto& [name, value] : mapOf(properties)) {
    const bool isKeyed = std::holds_alternative<Datum::Map>(value.content);
    described.emplace_back(name, Datum::Map{{isKeyed ? "Identifiers" : "Value", value}});
  }
  return described;
}

}  // namespace

StatusDevice statusDevice() {
  const Datum levels = forSupplies(level);
  const Datum names = forSupplies(
      [](std::size_t i) { return Datum(std::string(kSupplyNames[i]) + " Cartridge HY"); });
  StatusDevice device;
  device.messages = Datum::Map{
      {"suppliesIdentifiers", supplyIdentifiers()},
      {"supplyLevelForIdentifier:", levels},
      {"supplyNameForIdentifier:", names},
      {"supplyColorNameForIdentifier:", Datum::Map{{"Black", "black"}, {"Cyan", "cyan"}}},
  };
  device.features = Datum::Map{
      {"Device", Datum::Map{{"Vendor", "Quill"},
                            {"Model", "LaserWriter 12/640"},
                            {"State", "printing"},
                            {"Errors", 0x15},
                            {"Jobs", 3},
                            {"Pages", 12345},
                            {"Serial", "QL-0012345"}}},
      {"Supplies",
       Datum::Map{
           {"Level", levels},
           {"Name", names},
           {"Kind", forSupplies([](std::size_t i) { return Datum(i < 6 ? "toner" : "part"); })},
           {"Pages", forSupplies([](std::size_t i) { return Datum(static_cast<int>(i) * 700); })}}},
      {"Trays", Datum::Map{{"Level", forTrays([](int tray) { return Datum(tray * 20); })},
                           {"Paper", forTrays([](int tray) {
                              return Datum(tray % 2 == 0 ? "A4" : "Letter");
                            })}}},
  };
  return device;
}

Datum deviceDescription(const StatusDevice& device) {
  Datum::Map features;
  for (const auto& [name, properties] : mapOf(device.features)) {
    features.emplace_back(name, Datum::Map{{"Properties", describedProperties(properties)}});
  }
  return Datum::Map{{"DeviceID", "MFG:Quill;MDL:LaserWriter 12/640;CMD:PCL,LDL;"},
                    {"StatusServices",
                     Datum::Map{{"DMFSuppliesStatus", Datum::Map{{"Messages", device.messages}}},
                                {"Printer", Datum::Map{{"Features", std::move(features)}}}}}};
}

Datum luaDevice(const StatusDevice& device) {
  Datum::Map all;
  for (const auto& [name, value] : mapOf(device.messages)) all.emplace_back(name, value);
  for (const auto& [name, value] : mapOf(device.features)) all.emplace_back(name, value);
  return all;
}

}  // namespace commandfilter::benchmarks
