// What a template defines.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "check/KeyPath.h"
#include "runtime/Class.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter::tools {

enum class DefinitionKind : std::uint8_t { Value, Constant, Macro };
inline constexpr std::array kDefinitionKinds{DefinitionKind::Value, DefinitionKind::Constant,
                                             DefinitionKind::Macro};

/// "value", "constant" or "macro".
[[nodiscard]] constexpr std::string_view nameOf(DefinitionKind kind) noexcept {
  if (kind == DefinitionKind::Value) return "value";
  return kind == DefinitionKind::Constant ? "constant" : "macro";
}

/// A value, constant or macro.
struct Definition {
  DefinitionKind kind;
  /// A text of the template, which must outlive this.
  std::string_view name;
  const KeyPath* path;
  /// The class of the context that evaluates the expressions.
  const Class* context;
  /// The ServiceName of a value; nullptr when nothing answers its names and paths.
  const KeyPath* service = nullptr;
};

/// An expression and what it is part of.
struct ExpressionSite {
  enum class Role : std::uint8_t { Value, Filter, Range, Constant, Macro };

  /// The place of the definition among all.
  std::size_t definition;
  Role role;
  const KeyPath* path;
  Ref<String> expression;
  /// False when another expression of the value decides whether this one is evaluated.
  bool isAlwaysEvaluated = true;
};

/// All definitions of a template with their expressions, in the order of the template.
class Definitions {
 public:
  /// Adds a definition; of a name that is there already, the last one counts.
  std::size_t add(const Definition& definition) {
    all_.push_back(definition);
    indexes_[static_cast<std::size_t>(definition.kind)][definition.name] = all_.size() - 1;
    return all_.size() - 1;
  }
  [[nodiscard]] std::optional<std::size_t> find(DefinitionKind kind, std::string_view name) const {
    const auto& index = indexes_[static_cast<std::size_t>(kind)];
    const auto found = index.find(name);
    if (found == index.end()) return std::nullopt;
    return found->second;
  }
  [[nodiscard]] const std::vector<Definition>& all() const noexcept { return all_; }
  [[nodiscard]] std::vector<std::string_view> names(DefinitionKind kind) const {
    std::vector<std::string_view> names;
    for (const Definition& definition : all_) {
      if (definition.kind == kind) names.push_back(definition.name);
    }
    return names;
  }

  /// The classes of all contexts, each once.
  [[nodiscard]] std::vector<const Class*> contexts() const {
    std::vector<const Class*> contexts;
    for (const Definition& definition : all_) {
      if (std::ranges::find(contexts, definition.context) == contexts.end()) {
        contexts.push_back(definition.context);
      }
    }
    return contexts;
  }

  std::vector<ExpressionSite> sites;

 private:
  std::vector<Definition> all_;
  std::array<std::unordered_map<std::string_view, std::size_t>, kDefinitionKinds.size()> indexes_;
};

}  // namespace commandfilter::tools
