#include "device_io/SystemVersion.h"

#include <cstddef>
#include <cstdlib>

#include "runtime/Cast.h"
#include "runtime/Dictionary.h"
#include "runtime/File.h"
#include "runtime/ProcessInfo.h"
#include "runtime/PropertyList.h"
#include "runtime/UTF8.h"

namespace commandfilter {

namespace {

// No digit: a character that ends a number just as well.
constexpr char kForeign = '?';

// The version without its points, with one char for each code unit.
std::string digitsOf(std::string_view version) {
  std::string digits;
  for (std::size_t offset = 0; offset < version.size();) {
    const char32_t character = nextCodePoint(version, offset);
    if (character == '.') continue;
    constexpr char32_t kASCIIEnd = 0x80;
    constexpr char32_t kOneUnitEnd = 0x10000;
    if (character < kASCIIEnd) {
      digits.push_back(static_cast<char>(character));
    } else {
      digits.append(character < kOneUnitEnd ? 1 : 2, kForeign);
    }
  }
  return digits;
}

}  // namespace

std::optional<int> systemVersionNumber(std::string_view version) {
  constexpr std::size_t kDigits = 4;
  std::string digits = digitsOf(version);
  if (digits.size() == kDigits - 1) digits += '0';
  if (digits.size() == kDigits + 1) digits.replace(kDigits - 1, 2, "9");
  if (digits.size() != kDigits) return std::nullopt;
  constexpr int kHexadecimal = 16;
  const auto number = static_cast<int>(std::strtol(digits.c_str(), nullptr, kHexadecimal));
  if (number == 0) return std::nullopt;
  return number;
}

std::string systemVersionFolder(Bundle& bundle) {
  const auto* named = castTo<String>(bundle.infoDictionary().objectForKey("SystemVersionFolder"));
  if (named == nullptr || named->isEmpty()) return bundle.resourcePath();
  const std::string folder = named->text();
  if (folder == "~" || folder.starts_with("~/")) {
    return ProcessInfo::environmentValue("HOME").value_or("") + folder.substr(1);
  }
  return folder.starts_with('/') ? folder : bundle.bundlePath() + '/' + folder;
}

RefPtr<String> systemVersionString(Bundle& bundle) {
  const std::string path = systemVersionFolder(bundle) + "/SystemVersion.plist";
  if (!isRegularFile(path)) return nullptr;
  Result<Value> record = readPropertyList(path);
  const auto* entries = record ? castTo<Dictionary>(*record) : nullptr;
  if (entries == nullptr) return nullptr;
  return RefPtr<String>(castTo<String>(entries->objectForKey("ProductVersion")));
}

}  // namespace commandfilter
