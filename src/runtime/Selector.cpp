#include "runtime/Selector.h"

#include <algorithm>
#include <unordered_set>

namespace commandfilter {

namespace {

// Names are handed out as pointers until the process ends, so the set is never destroyed.
const std::string* intern(std::string_view name) {
  struct Hash {
    using is_transparent = void;  // NOLINT(readability-identifier-naming): the library's name
    std::size_t operator()(std::string_view text) const noexcept {
      return std::hash<std::string_view>{}(text);
    }
  };
  using Names = std::unordered_set<std::string, Hash, std::equal_to<>>;
  static auto& names = *new Names;  // NOLINT(cppcoreguidelines-owning-memory)
  const auto found = names.find(name);
  return found != names.end() ? &*found : &*names.emplace(name).first;
}

}  // namespace

Selector::Selector(std::string_view name) : name_(intern(name)) {}

std::optional<Selector> Selector::fromString(std::string_view name) {
  if (name.find('\0') != std::string_view::npos) return std::nullopt;
  return Selector(name);
}

std::size_t Selector::argumentCount() const noexcept {
  return static_cast<std::size_t>(std::count(name_->begin(), name_->end(), ':'));
}

}  // namespace commandfilter
