// What is wrong with a template.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "check/ByteRange.h"
#include "check/KeyPath.h"
#include "evaluation/protocol/SourceRange.h"
#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter::tools {

enum class Severity : std::uint8_t { Warning, Error };

[[nodiscard]] constexpr std::string_view nameOf(Severity severity) noexcept {
  return severity == Severity::Error ? "error" : "warning";
}

/// The kinds of findings, as programs see them.
namespace kind {
inline constexpr std::string_view kLexical = "lexical";
inline constexpr std::string_view kStructure = "structure";
inline constexpr std::string_view kUnknownProcedure = "unknown-procedure";
inline constexpr std::string_view kArgumentCount = "argument-count";
inline constexpr std::string_view kUndefined = "undefined";
inline constexpr std::string_view kUnused = "unused";
inline constexpr std::string_view kOutOfReach = "out-of-reach";
inline constexpr std::string_view kCircle = "circle";
inline constexpr std::string_view kIgnoredKey = "ignored-key";
inline constexpr std::string_view kWrongType = "wrong-type";
inline constexpr std::string_view kMissing = "missing";
inline constexpr std::string_view kShadowed = "shadowed";
inline constexpr std::string_view kDuplicate = "duplicate";
inline constexpr std::string_view kMore = "more";
}  // namespace kind

/// What is wrong, and what to do about it; each a sentence without a full stop.
struct Complaint {
  /// One of the kinds above.
  std::string_view kind;
  Severity severity;
  std::string message;
  std::string remedy;
};

/// A complaint about an expression.
struct ExpressionComplaint {
  SourceRange range;
  Complaint complaint;
};

/// A complaint and its place: in an expression, or at a key.
struct Finding {
  Complaint complaint;
  /// Where the expression, or the key, stands; nullptr for the whole file. Borrowed.
  const KeyPath* path = nullptr;
  /// nil for a finding about a key. The range is part of the expression.
  RefPtr<String> expression;
  SourceRange range;
  /// Where it stands in the file, when the path does not say it.
  std::optional<ByteRange> bytes = std::nullopt;
};

}  // namespace commandfilter::tools
