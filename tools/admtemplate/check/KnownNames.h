// The names that expressions of a template can use.
#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "check/Definitions.h"
#include "check/NearestName.h"
#include "runtime/Class.h"

namespace commandfilter::tools {

/// The names of the procedures that contexts of the class have, without "_".
[[nodiscard]] std::vector<std::string_view> proceduresOf(const Class& context);

/// The names of the procedures that _External calls, of all classes that are there.
[[nodiscard]] std::vector<std::string_view> externalProcedures();

/// Looks for what was probably meant by a name that nothing has.
class KnownNames {
 public:
  /// The definitions must outlive this.
  explicit KnownNames(const Definitions& definitions);

  /// What to write instead of the constant, value or procedure of that name.
  [[nodiscard]] std::string remedyForConstant(std::string_view name);
  [[nodiscard]] std::string remedyForValue(std::string_view name);
  [[nodiscard]] std::string remedyForProcedure(std::string_view name);
  [[nodiscard]] std::string remedyForExternal(std::string_view name);
  /// What to write instead of a word that is no operator; `isCalled` when a brace follows.
  [[nodiscard]] std::string remedyForWord(std::string_view word, bool isCalled);

 private:
  // How to refer to a definition of exactly this name; empty when there is none.
  [[nodiscard]] std::string definedAs(std::string_view name) const;

  const Definitions& definitions_;
  std::vector<std::string_view> callable_;
  std::unordered_set<std::string_view> callableSet_;
  NearestName constants_;
  NearestName values_;
  NearestName procedures_;
  NearestName externals_;
  NearestName words_;
};

}  // namespace commandfilter::tools
