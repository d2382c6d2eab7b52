// What a queue's backend lets the filter ask.
#pragma once

#include <string>
#include <string_view>

namespace commandfilter::tools {

/// How far a backend can be asked.
enum class Askable { Yes, Partly, No, Unknown };

/// A backend, as its device URI names it.
struct Backend {
  std::string scheme;
  Askable askable = Askable::Unknown;
  /// What it can be asked and how, and what would help where it cannot.
  std::string explanation;
};

[[nodiscard]] Backend backendOf(std::string_view deviceURI);

/// "yes", "partly", "no" or "unknown".
[[nodiscard]] std::string_view nameOf(Askable askable);

}  // namespace commandfilter::tools
