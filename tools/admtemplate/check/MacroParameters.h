// How macros use their arguments.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace commandfilter::tools {

/// What the body of a macro does with its arguments.
class MacroParameters {
 public:
  /// Notes that the body reads an argument; `mayBeNil` where it would do without a value.
  void noteArgument(std::size_t index, bool mayBeNil) {
    if (mayBeNil) {
      isOptional_[index] = true;
    } else {
      isOptional_.try_emplace(index, false);
    }
  }
  /// Notes that the body sees how many arguments there are, or is not known.
  void noteAnyNumber() noexcept { takesAnyNumber_ = true; }

  /// What is wrong with a call of so many arguments; none when nothing is.
  [[nodiscard]] std::optional<std::string> objectionTo(std::size_t arguments) const {
    if (takesAnyNumber_) return std::nullopt;
    for (const auto& [index, optional] : isOptional_) {
      if (!optional && index >= arguments) {
        return "reads @arg" + std::to_string(index) + ", which is nil in this call";
      }
    }
    const std::size_t read = isOptional_.empty() ? 0 : isOptional_.rbegin()->first + 1;
    if (arguments <= read) return std::nullopt;
    return read == 0 ? "reads no arguments"
                     : "reads no argument behind @arg" + std::to_string(read - 1);
  }

 private:
  // Whether the body can do without an argument, by its place. One that it asks for once, as in
  // "@arg1 or 5", it can do without.
  std::map<std::size_t, bool> isOptional_;
  bool takesAnyNumber_ = false;
};

}  // namespace commandfilter::tools
