#include "device_model/Supply.h"

namespace commandfilter {

std::string_view Supply::state() const noexcept {
  // What printers warn at when they do not say.
  constexpr int kLow = 10;
  if (!percent) return levelInfo == "some" ? "ok" : "";
  if (*percent <= 0) return isReceptacle() ? "full" : "empty";
  if (*percent <= lowPercent.value_or(kLow)) return isReceptacle() ? "almostFull" : "low";
  return "ok";
}

}  // namespace commandfilter
