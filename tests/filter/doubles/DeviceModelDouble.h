// A device-model framework that follows a script.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "runtime/Class.h"
#include "runtime/Value.h"

namespace commandfilter::testing {

/// What the framework does, and what was asked of it.
struct DeviceModelDouble {
  /// The framework's classes by name, to be registered together.
  static const Class kCoreFactoryClass;
  static const Class kInterpreterClass;

  /// The one framework of the process.
  [[nodiscard]] static DeviceModelDouble& shared();
  /// Back to the state at start.
  void reset() { *this = DeviceModelDouble(); }
  /// Notes the call; throws when the script says so.
  void called(const std::string& call);

  bool hasServiceFactory = true;
  bool hasAccessProvider = true;
  bool hasInterpreter = true;
  /// The device ID, none for a device without one. Its languages are those under "CMD:", separated
  /// by commas; an ID without that key lists none.
  std::optional<std::string> deviceID;
  /// The name of a call that throws.
  std::string throwingCall;

  /// The calls so far, in order, by their selectors.
  std::vector<std::string> calls;
  /// What the service factory was given.
  Value serviceInfo;
  /// What the interpreter was given.
  std::string interpretedID;
};

/// The classes that the filter finds when the framework is there.
inline constexpr std::array<const Class*, 2> kDeviceModelDouble{
    &DeviceModelDouble::kCoreFactoryClass, &DeviceModelDouble::kInterpreterClass};

}  // namespace commandfilter::testing
