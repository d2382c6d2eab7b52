// What a backend sends for an SNMP request over the side channel.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace commandfilter {

/// The numbers of an object identifier, ordered as the objects are.
using ObjectID = std::vector<std::uint32_t>;

/// How many numbers an identifier may have (RFC 2578).
inline constexpr std::size_t kObjectIDLength = 128;

/// `.1.3.6` or `1.3.6`; none for anything else.
[[nodiscard]] std::optional<ObjectID> parseObjectID(std::string_view text);
/// The identifier with a full stop before each number.
[[nodiscard]] std::string textOfObjectID(const ObjectID& identifier);
/// True when `identifier` begins with all of `root`.
[[nodiscard]] bool isBelow(const ObjectID& identifier, const ObjectID& root) noexcept;

/// An object and its value: octet strings as they are, numbers in decimal.
struct SNMPEntry {
  ObjectID identifier;
  std::string value;
};

/// Reads an answer: the identifier, a NUL, the value. None when it does not begin with an
/// identifier.
[[nodiscard]] std::optional<SNMPEntry> parseSNMPAnswer(std::string_view bytes);

/// A number as backends write it; none for everything else, also beyond 64 bits.
[[nodiscard]] std::optional<std::int64_t> integerOfSNMPValue(std::string_view value) noexcept;
/// The word that stands at the value's place; empty for a value that is no number or has none.
[[nodiscard]] std::string wordOfSNMPValue(std::span<const std::string_view> words,
                                          std::string_view value);
/// The text of an octet string, up to the first NUL and without blanks around it.
[[nodiscard]] std::string textOfSNMPValue(std::string_view value);

}  // namespace commandfilter
