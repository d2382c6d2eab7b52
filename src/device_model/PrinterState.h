// The state of a printer in words.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace commandfilter {

/// The conditions that hrPrinterDetectedErrorState names (RFC 3805), the most serious first: the
/// keywords of IPP where there is one, such as `media-jam`. The value is a string of bits, the
/// first of which is the highest of the first byte.
[[nodiscard]] std::vector<std::string_view> detectedErrors(std::string_view bits);

/// What the printer is doing, from hrPrinterStatus and hrDeviceStatus: `idle`, `processing`,
/// `warmup`, `stopped`, `unknown`; empty when neither is there.
[[nodiscard]] std::string_view printerStateWord(std::optional<std::int64_t> printerStatus,
                                                std::optional<std::int64_t> deviceStatus) noexcept;

}  // namespace commandfilter
