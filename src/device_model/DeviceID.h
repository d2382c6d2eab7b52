// Reading IEEE 1284 device IDs as printers write them.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace commandfilter {

/// A device ID, `KEY:value;KEY:value;`. Keys are known in their long and short forms, in any case
/// and with blanks anywhere; a value that is empty counts as missing, and of a key that occurs
/// twice the first value counts. The final semicolon may be missing.
class DeviceID {
 public:
  explicit DeviceID(std::string text) : text_(std::move(text)) {}

  /// The ID in bytes as a device sent them: without the length that some devices put in front,
  /// ended by the first NUL, and read as ISO 8859-1 unless it is UTF-8.
  [[nodiscard]] static std::string textOfBytes(std::string_view bytes);

  [[nodiscard]] const std::string& text() const noexcept { return text_; }
  /// The value of the first of the keys that is there, without blanks around it; empty when none
  /// is. Keys in upper case, without blanks.
  [[nodiscard]] std::string_view value(std::initializer_list<std::string_view> keys) const;

  [[nodiscard]] std::string_view manufacturer() const;
  [[nodiscard]] std::string_view model() const;
  [[nodiscard]] std::string_view serialNumber() const;
  /// A description for people.
  [[nodiscard]] std::string_view description() const;
  [[nodiscard]] std::string_view firmwareVersion() const;
  /// The parts of the command set, in its order.
  [[nodiscard]] std::vector<std::string_view> languages() const;

 private:
  std::string text_;
};

}  // namespace commandfilter
