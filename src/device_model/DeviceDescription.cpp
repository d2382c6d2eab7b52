#include "device_model/DeviceDescription.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

#include "device_model/NullObjects.h"
#include "device_model/SimulatedStatusService.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/PropertyList.h"
#include "runtime/String.h"

namespace commandfilter {

namespace {

// What is wrong with an entry; none when nothing is.
using Fault = std::optional<std::string>;

std::string placeOf(const std::string& parent, std::string_view key) {
  return parent.empty() ? std::string(key) : parent + " > " + std::string(key);
}

Fault wrong(const std::string& place, std::string_view what) {
  return place + " is not " + std::string(what);
}

// Checks every entry of a dictionary with the function, which takes its place, key and value.
template <typename Check>
Fault checkEntries(const std::string& place, const Value& value, Check&& check) {
  const auto* entries = castTo<Dictionary>(value);
  if (entries == nullptr) return wrong(place, "a dictionary");
  for (const DictionaryEntry& entry : *entries) {
    const auto* key = castTo<String>(entry.key);
    if (key == nullptr) return wrong("a key of " + place, "a text");
    if (Fault fault = check(placeOf(place, key->view()), key->view(), entry.value)) return fault;
  }
  return std::nullopt;
}

// Checks the entry of that name when it is there.
template <typename Check>
Fault checkOptional(const std::string& place, const Dictionary& parent, std::string_view key,
                    Check&& check) {
  const Value& value = parent.objectForKey(key);
  return value.isNil() ? std::nullopt : check(placeOf(place, key), value);
}

Fault checkDictionary(const std::string& place, const Value& value) {
  return castTo<Dictionary>(value) != nullptr ? std::nullopt : wrong(place, "a dictionary");
}

Fault checkArray(const std::string& place, const Value& value) {
  return castTo<Array>(value) != nullptr ? std::nullopt : wrong(place, "an array");
}

Fault checkText(const std::string& place, const Value& value) {
  return castTo<String>(value) != nullptr ? std::nullopt : wrong(place, "a text");
}

// A state has 32 bits; what is cut off of a larger number could leave one that means resolved.
Fault checkState(const std::string& place, const Value& value) {
  const bool good = value.isNumber() && !value.number().isReal() &&
                    value.number().compare(Number::integer(std::int64_t{INT32_MIN})) >= 0 &&
                    value.number().compare(Number::integer(std::int64_t{INT32_MAX})) <= 0;
  return good ? std::nullopt : wrong(place, "an integer of 32 bits");
}

Fault checkDelay(const std::string& place, const Value& value) {
  const bool good = value.isNumber() && std::isfinite(value.number().doubleValue()) &&
                    value.number().doubleValue() >= 0;
  return good ? std::nullopt : wrong(place, "a number of seconds");
}

Fault checkOutcome(const std::string& place, const Value& value) {
  constexpr std::array<std::string_view, 3> kOutcomes{"resolve", "fail", "never"};
  const bool good = std::ranges::find(kOutcomes, textOf(castTo<String>(value))) != kOutcomes.end();
  return good ? std::nullopt : wrong(place, "\"resolve\", \"fail\" or \"never\"");
}

Fault checkResolution(const std::string& place, const Value& value) {
  const auto* resolution = castTo<Dictionary>(value);
  if (resolution == nullptr) return wrong(place, "a dictionary");
  if (Fault fault = checkOptional(place, *resolution, "Delay", checkDelay)) return fault;
  return checkOptional(place, *resolution, "Outcome", checkOutcome);
}

Fault checkModelInfo(const std::string& place, const Value& value) {
  return checkEntries(place, value,
                      [](const std::string& table, std::string_view /*name*/, const Value& paths) {
                        return checkDictionary(table, paths);
                      });
}

Fault checkMessage(const std::string& place, std::string_view selector, const Value& value) {
  const auto colons = static_cast<std::size_t>(std::ranges::count(selector, ':'));
  if (selector.empty() || selector.find('\0') != std::string_view::npos ||
      colons > SimulatedStatusService::kMostArguments) {
    return wrong(place, "named as a message");
  }
  return colons == 1 ? checkDictionary(place, value) : std::nullopt;
}

Fault checkProperty(const std::string& place, std::string_view /*name*/, const Value& value) {
  const auto* property = castTo<Dictionary>(value);
  if (property == nullptr) return wrong(place, "a dictionary");
  return checkOptional(place, *property, "Identifiers", checkDictionary);
}

Fault checkFeature(const std::string& place, std::string_view /*name*/, const Value& value) {
  const auto* feature = castTo<Dictionary>(value);
  if (feature == nullptr) return wrong(place, "a dictionary");
  if (Fault fault = checkOptional(place, *feature, "Identifiers", checkArray)) return fault;
  return checkOptional(place, *feature, "Properties",
                       [](const std::string& properties, const Value& entries) {
                         return checkEntries(properties, entries, checkProperty);
                       });
}

Fault checkService(const std::string& place, std::string_view /*name*/, const Value& value) {
  const auto* service = castTo<Dictionary>(value);
  if (service == nullptr) return wrong(place, "a dictionary");
  Fault fault =
      checkOptional(place, *service, "Messages", [](const std::string& part, const Value& entries) {
        return checkEntries(part, entries, checkMessage);
      });
  if (fault) return fault;
  return checkOptional(place, *service, "Features",
                       [](const std::string& part, const Value& entries) {
                         return checkEntries(part, entries, checkFeature);
                       });
}

Fault checkServices(const std::string& place, const Value& value) {
  return checkEntries(place, value, checkService);
}

struct Entry {
  std::string_view key;
  Fault (*check)(const std::string& place, const Value& value);
};
constexpr std::array kEntries{
    Entry{"DeviceID", checkText},
    Entry{"ServiceState", checkState},
    Entry{"URI", checkText},
    Entry{"ConnectionType", checkText},
    Entry{"VendorName", checkText},
    Entry{"ModelName", checkText},
    Entry{"ConnectionParams", checkDictionary},
    Entry{"Resolution", checkResolution},
    Entry{"ModelInfo", checkModelInfo},
    Entry{"StatusServices", checkServices},
};

int hexadecimalDigit(char c) noexcept {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

Result<std::string> pathOfSimulatedURI(std::string_view uri) {
  if (!uri.starts_with(kSimulatedScheme)) return Failure{"is no simulated:// URI"};
  uri.remove_prefix(kSimulatedScheme.size());
  uri = uri.substr(0, uri.find_first_of("?#"));
  std::string path;
  for (std::size_t i = 0; i < uri.size(); ++i) {
    if (uri[i] == '%' && i + 2 < uri.size()) {
      const int high = hexadecimalDigit(uri[i + 1]);
      const int low = hexadecimalDigit(uri[i + 2]);
      if (high >= 0 && low >= 0) {
        path.push_back(static_cast<char>(high * 16 + low));
        i += 2;
        continue;
      }
    }
    path.push_back(uri[i]);
  }
  if (path.empty() || path.front() != '/' || path.find('\0') != std::string::npos) {
    return Failure{"names no file: write simulated:///path/of/the/description"};
  }
  return path;
}

Result<Ref<Dictionary>> checkedDeviceDescription(const Value& list) {
  auto* description = castTo<Dictionary>(list);
  if (description == nullptr) return Failure{"is not a dictionary"};
  for (const Entry& entry : kEntries) {
    if (Fault fault = checkOptional({}, *description, entry.key, entry.check)) {
      return Failure{std::move(*fault)};
    }
  }
  return Ref<Dictionary>(*description);
}

Result<Ref<Dictionary>> readDeviceDescription(const std::string& path) {
  const auto at = [&path](const std::string& reason) { return Failure{path + ": " + reason}; };
  Result<Value> list = readPropertyList(path);
  if (!list) return at(list.reason());
  Result<Ref<Dictionary>> description = checkedDeviceDescription(withNullObjects(*list));
  if (!description) return at(description.reason());
  return description;
}

}  // namespace commandfilter
