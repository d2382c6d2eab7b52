#include "device_model/DeviceTables.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>

#include "device_model/SNMPAnswer.h"

namespace commandfilter {

namespace {

// Columns are asked for one by one: these tables have many that nobody needs.
ObjectID inputColumn(std::uint32_t column) { return {1, 3, 6, 1, 2, 1, 43, 8, 2, 1, column}; }
ObjectID mediaPathColumn(std::uint32_t column) { return {1, 3, 6, 1, 2, 1, 43, 13, 4, 1, column}; }
ObjectID alertColumn(std::uint32_t column) { return {1, 3, 6, 1, 2, 1, 43, 18, 1, 1, column}; }

constexpr std::uint32_t kInputType = 2;
constexpr std::uint32_t kInputName = 13;
constexpr std::uint32_t kInputDescription = 18;
constexpr std::uint32_t kMediaPathType = 9;
constexpr std::uint32_t kAlertSeverity = 2;
constexpr std::uint32_t kAlertCode = 7;
constexpr std::uint32_t kAlertDescription = 8;

// The values of a column by row, for the agent's first printer.
std::map<std::uint32_t, std::string> columnOf(BackendTransport& backend, const ObjectID& column) {
  std::map<std::uint32_t, std::string> values;
  std::optional<std::uint32_t> printer;
  for (SNMPEntry& entry : backend.snmpTable(column)) {
    constexpr std::size_t kIndexes = 2;
    if (entry.identifier.size() != column.size() + kIndexes) continue;
    const std::uint32_t owner = entry.identifier[column.size()];
    if (!printer) printer = owner;
    if (owner == *printer) values.emplace(entry.identifier.back(), std::move(entry.value));
  }
  return values;
}

std::string_view valueIn(const std::map<std::uint32_t, std::string>& column, std::uint32_t row) {
  const auto found = column.find(row);
  return found != column.end() ? std::string_view(found->second) : std::string_view();
}

std::string inputTypeWord(std::string_view value) {
  constexpr std::array<std::string_view, 8> kWords{"",
                                                   "other",
                                                   "unknown",
                                                   "sheetFeedAutoRemovableTray",
                                                   "sheetFeedAutoNonRemovableTray",
                                                   "sheetFeedManual",
                                                   "continuousRoll",
                                                   "continuousFanFold"};
  return wordOfSNMPValue(kWords, value);
}

std::string severityWord(std::string_view value) {
  // 4 and 5 are warnings, the latter one that goes away by itself.
  switch (integerOfSNMPValue(value).value_or(0)) {
    case 1:
      return "other";
    case 3:
      return "critical";
    case 4:
    case 5:
      return "warning";
    default:
      return {};
  }
}

}  // namespace

std::vector<InputTray> inputTraysOf(BackendTransport& backend) {
  const auto types = columnOf(backend, inputColumn(kInputType));
  if (types.empty()) return {};
  const auto names = columnOf(backend, inputColumn(kInputName));
  const auto descriptions = columnOf(backend, inputColumn(kInputDescription));
  std::vector<InputTray> trays;
  trays.reserve(types.size());
  for (const auto& [row, type] : types) {
    std::string name = textOfSNMPValue(valueIn(names, row));
    if (name.empty()) name = textOfSNMPValue(valueIn(descriptions, row));
    trays.push_back({std::to_string(row), std::move(name), inputTypeWord(type)});
  }
  return trays;
}

std::vector<DeviceAlert> alertsOf(BackendTransport& backend) {
  const auto codes = columnOf(backend, alertColumn(kAlertCode));
  if (codes.empty()) return {};
  const auto severities = columnOf(backend, alertColumn(kAlertSeverity));
  const auto descriptions = columnOf(backend, alertColumn(kAlertDescription));
  std::vector<DeviceAlert> alerts;
  alerts.reserve(codes.size());
  for (const auto& [row, code] : codes) {
    alerts.push_back({std::to_string(row), severityWord(valueIn(severities, row)),
                      integerOfSNMPValue(code), textOfSNMPValue(valueIn(descriptions, row))});
  }
  return alerts;
}

std::optional<bool> hasDuplexer(BackendTransport& backend) {
  constexpr std::int64_t kLongEdge = 3;
  constexpr std::int64_t kShortEdge = 4;
  constexpr std::int64_t kSimplex = 5;
  std::optional<bool> turns;
  for (const auto& [row, value] : columnOf(backend, mediaPathColumn(kMediaPathType))) {
    const std::int64_t type = integerOfSNMPValue(value).value_or(0);
    if (type < kLongEdge || type > kSimplex) continue;
    turns = turns.value_or(false) || type == kLongEdge || type == kShortEdge;
  }
  return turns;
}

}  // namespace commandfilter
