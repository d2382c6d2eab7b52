#include "device_model/PrinterState.h"

#include <array>
#include <cstddef>

namespace commandfilter {

namespace {

struct Condition {
  std::size_t bit;
  std::string_view keyword;
};
// What stops the printer comes before what will stop it.
constexpr std::array<Condition, 15> kConditions{{
    {6, "offline"},
    {5, "media-jam"},
    {4, "door-open"},
    {1, "media-empty"},
    {13, "input-tray-empty"},
    {8, "input-tray-missing"},
    {9, "output-tray-missing"},
    {12, "output-area-full"},
    {10, "marker-supply-missing"},
    {3, "marker-supply-empty"},
    {7, "service-needed"},
    {14, "maintenance-overdue"},
    {2, "marker-supply-low"},
    {0, "media-low"},
    {11, "output-area-almost-full"},
}};

}  // namespace

std::vector<std::string_view> detectedErrors(std::string_view bits) {
  constexpr std::size_t kBitsInByte = 8;
  std::vector<std::string_view> keywords;
  for (const Condition& condition : kConditions) {
    const std::size_t byte = condition.bit / kBitsInByte;
    if (byte >= bits.size()) continue;
    const unsigned mask = 0x80U >> (condition.bit % kBitsInByte);
    if ((static_cast<unsigned char>(bits[byte]) & mask) != 0) keywords.push_back(condition.keyword);
  }
  return keywords;
}

std::string_view printerStateWord(std::optional<std::int64_t> printerStatus,
                                  std::optional<std::int64_t> deviceStatus) noexcept {
  constexpr std::int64_t kDown = 5;
  if (deviceStatus == kDown) return "stopped";
  if (!printerStatus) return deviceStatus ? "unknown" : "";
  switch (*printerStatus) {
    case 3:
      return "idle";
    case 4:
      return "processing";
    case 5:
      return "warmup";
    default:
      return "unknown";
  }
}

}  // namespace commandfilter
