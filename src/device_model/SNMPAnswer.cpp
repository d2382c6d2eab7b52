#include "device_model/SNMPAnswer.h"

#include <algorithm>
#include <charconv>

#include "runtime/String.h"
#include "runtime/Text.h"

namespace commandfilter {

std::optional<ObjectID> parseObjectID(std::string_view text) {
  if (text.starts_with('.')) text.remove_prefix(1);
  ObjectID identifier;
  while (true) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || identifier.size() == kObjectIDLength) return std::nullopt;
    identifier.push_back(number);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (text.empty()) return identifier;
    if (text.front() != '.') return std::nullopt;
    text.remove_prefix(1);
  }
}

std::string textOfObjectID(const ObjectID& identifier) {
  std::string text;
  for (const std::uint32_t number : identifier) text.append(".").append(std::to_string(number));
  return text;
}

bool isBelow(const ObjectID& identifier, const ObjectID& root) noexcept {
  return identifier.size() >= root.size() &&
         std::equal(root.begin(), root.end(), identifier.begin());
}

std::optional<SNMPEntry> parseSNMPAnswer(std::string_view bytes) {
  const std::size_t end = bytes.find('\0');
  std::optional<ObjectID> identifier = parseObjectID(bytes.substr(0, end));
  if (!identifier) return std::nullopt;
  const std::string_view value =
      end == std::string_view::npos ? std::string_view() : bytes.substr(end + 1);
  return SNMPEntry{std::move(*identifier), std::string(value)};
}

std::optional<std::int64_t> integerOfSNMPValue(std::string_view value) noexcept {
  value = value.substr(0, value.find('\0'));
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
  if (error != std::errc() || end != value.data() + value.size()) return std::nullopt;
  return number;
}

std::string textOfSNMPValue(std::string_view value) {
  value = value.substr(0, value.find('\0'));
  return std::string(trimmed(String::fromDeviceText(value)->view()));
}

std::string wordOfSNMPValue(std::span<const std::string_view> words, std::string_view value) {
  const std::optional<std::int64_t> code = integerOfSNMPValue(value);
  const bool known = code && *code >= 0 && *code < static_cast<std::int64_t>(words.size());
  return std::string(known ? words[static_cast<std::size_t>(*code)] : std::string_view());
}

}  // namespace commandfilter
