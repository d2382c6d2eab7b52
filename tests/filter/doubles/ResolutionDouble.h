// A device-model framework whose resolutions follow a script.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/RunLoop.h"
#include "runtime/device_model/ADMServiceInfo.h"

namespace commandfilter::testing {

/// What the framework does, and what was asked of it.
struct ResolutionDouble {
  /// How a resolution ends.
  enum class Outcome { Resolves, Fails, NeverEnds, EndsUntold, Throws };

  /// The framework's class by name.
  static const Class kCoreFactoryClass;

  /// The one framework of the process.
  [[nodiscard]] static ResolutionDouble& shared();
  /// Back to the state at start.
  void reset() { *this = ResolutionDouble(); }

  bool makesServiceInfo = true;
  Outcome outcome = Outcome::Resolves;
  /// How long a resolution takes, in seconds; negative when it ends before it is waited for.
  double delay = 0.001;
  /// The state of the service infos, whatever the outcome.
  std::int32_t serviceState = kServiceStateResolved;

  /// The calls so far, in order, by their selectors.
  std::vector<std::string> calls;
  std::string uri;
  std::string deviceClass;
  /// The name of the class of the I/O provider; empty for none.
  std::string ioProvider;
  /// The name of the class that the I/O provider names for the device; empty for none.
  std::string deviceImplementor;
  /// Of the last call each.
  const Object* delegate = nullptr;
  /// Borrowed.
  ADMServiceInfo* serviceInfo = nullptr;
  const RunLoop* runLoop = nullptr;
  std::string mode;
  double timeout = 0;
};

}  // namespace commandfilter::testing
