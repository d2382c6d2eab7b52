// A device-model framework that gives what a test wants.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "runtime/Class.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Value.h"

namespace commandfilter::testing {

/// Registers the framework's classes as long as it lives; there is one at a time.
class FrameworkDouble {
 public:
  enum class Parts {
    /// Status factories and capabilities.
    All,
    /// A core factory that offers nothing.
    CoreFactoryOnly,
  };

  explicit FrameworkDouble(Parts parts = Parts::All);
  FrameworkDouble(const FrameworkDouble&) = delete;
  FrameworkDouble& operator=(const FrameworkDouble&) = delete;
  ~FrameworkDouble();

  /// Whether `newStatusFactory` gives one.
  bool hasStatusFactory = true;
  /// What `interfaceForProtocol:serviceInfo:` gives.
  Value status;
  /// What the capabilities' initialiser gives.
  Value capabilities;
  /// The calls so far: selector and protocol's name.
  std::vector<std::string> calls;
  /// The service info of the last of them.
  Value serviceInfo;

  [[nodiscard]] static FrameworkDouble& current();

 private:
  ClassRegistry::Registration registration_;
};

}  // namespace commandfilter::testing
