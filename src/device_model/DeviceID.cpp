#include "device_model/DeviceID.h"

#include <cstddef>

#include "runtime/String.h"

namespace commandfilter {

namespace {

// ASCII's rules whatever the locale: the keys are ASCII.
constexpr bool isBlank(char c) noexcept {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\v' || c == '\f';
}
constexpr char upper(char c) noexcept {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::string_view withoutBlanksAround(std::string_view text) noexcept {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

// The part before the separator, which is taken off the text together with the separator.
std::string_view nextPart(std::string_view& text, char separator) noexcept {
  const std::size_t end = text.find(separator);
  const std::string_view part = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return part;
}

bool isKey(std::string_view written, std::string_view key) noexcept {
  std::size_t matched = 0;
  for (const char c : written) {
    if (isBlank(c)) continue;
    if (matched == key.size() || upper(c) != key[matched]) return false;
    ++matched;
  }
  return matched == key.size();
}

}  // namespace

std::string DeviceID::textOfBytes(std::string_view bytes) {
  constexpr std::size_t kLength = 2;
  if (bytes.size() >= kLength) {
    const auto first = static_cast<unsigned char>(bytes[0]);
    const auto second = static_cast<unsigned char>(bytes[1]);
    // The standard counts the two bytes and puts the high one first; not every device does.
    for (const std::size_t length :
         {std::size_t{first} << 8U | second, std::size_t{second} << 8U | first}) {
      if (length == bytes.size() || length == bytes.size() - kLength) {
        bytes.remove_prefix(kLength);
        break;
      }
    }
  }
  bytes = bytes.substr(0, bytes.find('\0'));
  return String::fromDeviceText(bytes)->text();
}

std::string_view DeviceID::value(std::initializer_list<std::string_view> keys) const {
  for (const std::string_view key : keys) {
    std::string_view rest = text_;
    while (!rest.empty()) {
      std::string_view found = nextPart(rest, ';');
      if (found.find(':') == std::string_view::npos || !isKey(nextPart(found, ':'), key)) continue;
      found = withoutBlanksAround(found);
      if (!found.empty()) return found;
    }
  }
  return {};
}

std::string_view DeviceID::manufacturer() const { return value({"MFG", "MANUFACTURER"}); }

std::string_view DeviceID::model() const { return value({"MDL", "MODEL"}); }

std::string_view DeviceID::serialNumber() const {
  return value({"SN", "SERIALNUMBER", "SERN", "SERIAL"});
}

std::string_view DeviceID::description() const { return value({"DES", "DESCRIPTION"}); }

std::string_view DeviceID::firmwareVersion() const { return value({"FWVER", "FIRMWAREVERSION"}); }

std::vector<std::string_view> DeviceID::languages() const {
  std::vector<std::string_view> languages;
  std::string_view rest = value({"CMD", "COMMANDSET"});
  while (!rest.empty()) {
    const std::string_view language = withoutBlanksAround(nextPart(rest, ','));
    if (!language.empty()) languages.push_back(language);
  }
  return languages;
}

}  // namespace commandfilter
