// The input parameters that templates read.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "check/NearestName.h"
#include "runtime/Cast.h"
#include "runtime/Dictionary.h"
#include "runtime/String.h"

namespace commandfilter::tools {

/// The input parameters that there are, and which of them are read.
class InputNames {
 public:
  /// The dictionary must outlive this.
  explicit InputNames(const Dictionary& input) : InputNames(input, namesOf(input)) {}

  [[nodiscard]] bool has(std::string_view name) const { return !input_.objectForKey(name).isNil(); }
  [[nodiscard]] std::string_view nearest(std::string_view name) { return nearest_.of(name); }
  void noteRead(std::string_view name) { read_.emplace(name); }
  /// Notes that a name is computed, so that any may be read.
  void noteAnyRead() noexcept { isAnyRead_ = true; }

  /// Those that nothing reads, in the order of the file.
  [[nodiscard]] std::vector<std::string_view> unread() const {
    std::vector<std::string_view> names;
    if (isAnyRead_) return names;
    for (const std::string_view name : names_) {
      if (!read_.contains(std::string(name))) names.push_back(name);
    }
    return names;
  }

 private:
  InputNames(const Dictionary& input, std::vector<std::string_view> names)
      : input_(input), names_(names), nearest_(std::move(names)) {}

  static std::vector<std::string_view> namesOf(const Dictionary& input) {
    std::vector<std::string_view> names;
    for (const DictionaryEntry& entry : input) names.push_back(textOf(castTo<String>(entry.key)));
    return names;
  }

  const Dictionary& input_;
  std::vector<std::string_view> names_;
  NearestName nearest_;
  std::unordered_set<std::string> read_;
  bool isAnyRead_ = false;
};

}  // namespace commandfilter::tools
