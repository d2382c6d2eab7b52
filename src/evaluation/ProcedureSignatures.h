// What the built-in procedures accept.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace commandfilter {

/// How many arguments a procedure accepts.
struct ArgumentCount {
  static constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

  std::size_t least;
  std::size_t most;
  /// True for a procedure that takes more than `most` and does not look at them.
  bool ignoresMore = false;
  /// True for a procedure that takes an even number.
  bool inPairs = false;

  /// True when the procedure takes that many; anything else it refuses.
  [[nodiscard]] constexpr bool accepts(std::size_t count) const noexcept {
    return count >= least && (count <= most || ignoresMore) && (!inPairs || count % 2 == 0);
  }
};

/// A built-in procedure to whoever calls it.
struct ProcedureSignature {
  /// Without the leading "_".
  std::string_view name;
  /// The arguments as documents show them; brackets are around those that may be left out.
  std::string_view arguments;
  ArgumentCount count;
  /// How many of the first arguments every call evaluates; whether others are evaluated depends on
  /// their values.
  std::size_t alwaysEvaluated;
  /// The arguments from `firstOfElement` up to, not including, `endOfElement` are evaluated for
  /// each element of a list, in an aggregate context.
  std::size_t firstOfElement = 0;
  std::size_t endOfElement = 0;

  [[nodiscard]] constexpr bool isForEachElement(std::size_t argument) const noexcept {
    return argument >= firstOfElement && argument < endOfElement;
  }
};

/// All built-in procedures. The procedures themselves read their counts here.
inline constexpr std::array kProcedureSignatures{
    ProcedureSignature{"Translate", "keys, table", {2, 2}, 2},
    ProcedureSignature{"GetKey", "container, value [, default]", {2, 3}, 1},
    ProcedureSignature{"GetItem", "container, key [, default]", {2, 3}, 1},
    ProcedureSignature{"In", "value, candidate, ...", {2, ArgumentCount::kAnyNumber}, 2},
    ProcedureSignature{"Contains", "collection, value, ...", {2, ArgumentCount::kAnyNumber}, 1},
    ProcedureSignature{"MaxValue", "collection", {1, 1}, 1},
    ProcedureSignature{"AllKeys", "collection", {1, 1}, 1},
    ProcedureSignature{"GetSize", "collection", {1, 1}, 1},
    ProcedureSignature{"Dictionary",
                       "[value, key, ...]",
                       {.least = 0, .most = ArgumentCount::kAnyNumber, .inPairs = true},
                       ArgumentCount::kAnyNumber},
    ProcedureSignature{
        "Array", "[value, ...]", {0, ArgumentCount::kAnyNumber}, ArgumentCount::kAnyNumber},
    ProcedureSignature{"Sort", "list, key", {.least = 2, .most = 2, .ignoresMore = true}, 1, 1, 2},
    ProcedureSignature{
        "Filter", "list, condition", {.least = 2, .most = 2, .ignoresMore = true}, 1, 1, 2},
    ProcedureSignature{"AggregateIf",
                       "list, condition, step, initial",
                       {.least = 4, .most = 4, .ignoresMore = true},
                       1,
                       1,
                       3},
    ProcedureSignature{"Aggregate",
                       "list, step [, initial]",
                       {.least = 2, .most = 3, .ignoresMore = true},
                       1,
                       1,
                       2},
    ProcedureSignature{"Exclude", "a, b", {2, 2}, 2},
    ProcedureSignature{"Intersect", "a, b", {2, 2}, 2},
    ProcedureSignature{"Union", "a, b", {2, 2}, 2},
    ProcedureSignature{"Service", "[name]", {0, 1}, 1},
    ProcedureSignature{
        "ServiceValue", "service, component, ...", {1, ArgumentCount::kAnyNumber}, 1},
    ProcedureSignature{"InputValue", "name", {1, 1}, 1},
    ProcedureSignature{"TemplateValue", "name", {1, 1}, 1},
    // How many more depends on the method: one for each colon of its name.
    ProcedureSignature{
        "CallMethod", "object, method, argument, ...", {2, ArgumentCount::kAnyNumber}, 2},
    ProcedureSignature{"External", "name, argument, ...", {1, ArgumentCount::kAnyNumber}, 1},
    ProcedureSignature{"Enquote", "text [, quotes]", {1, 2}, 1},
    ProcedureSignature{"EndLine", "", {.least = 0, .most = 0, .ignoresMore = true}, 0},
};

/// The signature of the procedure; nullptr when there is no such procedure.
[[nodiscard]] constexpr const ProcedureSignature* procedureSignature(
    std::string_view name) noexcept {
  const auto* found = std::ranges::find(kProcedureSignatures, name, &ProcedureSignature::name);
  return found != kProcedureSignatures.end() ? found : nullptr;
}

/// The count of a procedure that is known when the program is compiled; a name that is none does
/// not compile.
[[nodiscard]] consteval ArgumentCount argumentsOf(std::string_view name) {
  for (const ProcedureSignature& signature : kProcedureSignatures) {
    if (signature.name == name) return signature.count;
  }
  throw std::invalid_argument("there is no such procedure");
}

}  // namespace commandfilter
