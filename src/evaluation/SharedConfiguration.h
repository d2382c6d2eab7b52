// What the contexts of one template have in common.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "evaluation/protocol/ADMEvaluationError.h"
#include "evaluation/protocol/ADMNamedValues.h"
#include "evaluation/protocol/EvaluationName.h"
#include "expression/ADMEvaluationProcessor.h"
#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter {

/// A macro's expression and what compiling it left behind.
struct CompiledMacro {
  /// The compiled expression; without a root item when it does not compile.
  Ref<ADMEvaluationProcessor> processor;
  /// The error of the compilation, which belongs to every call; nil when there was none.
  RefPtr<ADMEvaluationError> error;
};

/// A global configuration with what has been found in it: the macros that were called, compiled,
/// and who answers the names of constants and values. A context and those that are made for its
/// evaluation share one.
class SharedConfiguration final : public Object {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<SharedConfiguration> create(Ref<Dictionary> configuration);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] const Dictionary& configuration() const noexcept { return *configuration_; }
  /// nullptr when the configuration has no constants, or they answer to messages only. Borrowed.
  [[nodiscard]] ADMNamedValues* constants() const noexcept { return constants_; }
  /// What they answer as their permanence; nullptr without them. Borrowed.
  [[nodiscard]] Object* permanenceOfConstants() const noexcept { return permanenceOfConstants_; }
  /// The same as `constants` for the values of the template.
  [[nodiscard]] ADMNamedValues* templateValues() const noexcept { return templateValues_; }
  /// The macro of that name, compiled on the first call; nullptr when there is none.
  /// @throws Exception when what stands under the name is no text.
  [[nodiscard]] const CompiledMacro* macroNamed(const EvaluationName& name) {
    if (name.selector()) {
      const CompiledMacro* macro = called_[placeOf(name.selector()->name())].macro;
      if (macro != nullptr) return macro;
    }
    return findMacro(name);
  }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  /// A macro that was called. The name of its procedure's selector is one address.
  struct Called {
    const std::string* name = nullptr;
    const CompiledMacro* macro = nullptr;
  };
  static constexpr std::size_t kFewest = 32;

  explicit SharedConfiguration(Ref<Dictionary> configuration);
  ~SharedConfiguration() override = default;

  /// The place of the name in the table, or the free one that it would take.
  [[nodiscard]] std::size_t placeOf(const std::string& name) const noexcept {
    // Addresses differ in few bits; all of them take part.
    constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15U;
    std::size_t place = reinterpret_cast<std::uintptr_t>(&name) * kGoldenRatio >> 32U & mask_;
    while (called_[place].name != nullptr && called_[place].name != &name) {
      place = (place + 1) & mask_;
    }
    return place;
  }
  void remember(const std::string& name, const CompiledMacro& macro);
  [[nodiscard]] const CompiledMacro* findMacro(const EvaluationName& name);
  [[nodiscard]] const CompiledMacro& compiled(const String& expression);

  Ref<Dictionary> configuration_;
  ADMNamedValues* constants_;
  Object* permanenceOfConstants_;
  ADMNamedValues* templateValues_;
  // Those that were called, in a table that is searched from a name's hash on and at least half
  // free; with one less than there are places, whose number is a power of two.
  std::vector<Called> called_ = std::vector<Called>(kFewest);
  std::size_t mask_ = kFewest - 1;
  std::size_t calledCount_ = 0;
  // By identity: a template holds each macro's text once, and the processor keeps it alive.
  std::map<const String*, CompiledMacro> macros_;
};

}  // namespace commandfilter
