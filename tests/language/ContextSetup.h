// The contexts that case files describe.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "evaluation/protocol/ADMArrayIteration.h"
#include "evaluation/protocol/ADMEvaluationContext.h"
#include "language/CallLog.h"
#include "language/CaseNotation.h"
#include "language/DeviceDouble.h"
#include "runtime/Ref.h"

namespace commandfilter::testing {

/// A context as it is described. Names in order of writing.
struct ContextSetup {
  enum class Kind { Base, Single, Array, Walk, Aggregate, Macro };
  using Names = std::vector<std::pair<std::string, Notation>>;

  std::string name;
  Kind kind = Kind::Single;
  /// The name of the device that is the status service.
  std::string device;
  /// A status service that is another value than a device.
  std::optional<Notation> service;
  /// Of array, walk and aggregate contexts.
  Notation list;
  std::size_t at = 0;
  /// Of aggregate contexts.
  Notation initial;
  /// Of aggregate and macro contexts: another context's name.
  std::string parent;
  /// Of macro contexts: expressions.
  std::vector<std::string> arguments;
  // The configuration; without any of these there is none, or an aggregate context's parent's.
  Names constants;
  Names values;
  Names macros;
  Names input;
  /// Service names and the devices that serve them.
  std::vector<std::pair<std::string, std::string>> services;
};

/// The devices and contexts that the cases of one file can name.
struct Setups {
  std::map<std::string, DeviceFacts> devices;
  std::map<std::string, ContextSetup> contexts;
};

/// A context and the one behind it.
struct PreparedContext {
  Ref<ADMEvaluationContext> context;
  RefPtr<ADMEvaluationContext> parent;
  /// The context as an iteration; nil for the kinds that are none.
  ADMArrayIteration* iteration;
};

/// Makes the context; the setups and the log must outlive it.
[[nodiscard]] PreparedContext prepareContext(const Setups& setups, const ContextSetup& setup,
                                             CallLog& log);

}  // namespace commandfilter::testing
