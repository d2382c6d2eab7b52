// Interned names of messages.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "runtime/Export.h"

namespace commandfilter {

/// The name of a message, such as `valueForFeature:property:`. Two selectors of one name are the
/// same pointer, so comparing and hashing them costs nothing. Names live as long as the process.
class COMMANDFILTER_EXPORT Selector {
 public:
  /// The selector of a name known to be one.
  explicit Selector(std::string_view name);
  /// The selector for any text; none for a text that holds a NUL, which no name can.
  [[nodiscard]] static std::optional<Selector> fromString(std::string_view name);

  [[nodiscard]] const std::string& name() const noexcept { return *name_; }
  /// One argument for each colon.
  [[nodiscard]] std::size_t argumentCount() const noexcept;
  [[nodiscard]] std::size_t hash() const noexcept { return std::hash<const void*>{}(name_); }

  friend bool operator==(const Selector& left, const Selector& right) noexcept {
    return left.name_ == right.name_;
  }

 private:
  const std::string* name_;
};

}  // namespace commandfilter
