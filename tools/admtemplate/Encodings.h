// Bytes and times as text.
#pragma once

#include <string>
#include <string_view>

namespace commandfilter::tools {

/// The bytes in base64 (RFC 4648), padded.
[[nodiscard]] std::string base64(std::string_view bytes);

/// A time as ISO 8601 writes it in UTC, `2020-01-31T12:00:00Z`, with as many digits of a second as
/// there are. A time whose year no calendar has is the number of its seconds.
[[nodiscard]] std::string timeInUTC(double secondsSince1970);

}  // namespace commandfilter::tools
