#include "runtime/PropertyList.h"

#include <plist/plist.h>

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "runtime/Array.h"
#include "runtime/Data.h"
#include "runtime/Date.h"
#include "runtime/Dictionary.h"
#include "runtime/File.h"
#include "runtime/PropertyListShape.h"
#include "runtime/String.h"
#include "runtime/UTF8.h"

namespace commandfilter {

namespace {

constexpr std::string_view kBinaryMagic = "bplist00";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
// Property lists count dates from 2001-01-01.
constexpr double kSecondsFrom1970To2001 = 978307200.0;

struct FreeNode {
  void operator()(plist_t node) const noexcept { plist_free(node); }
};
struct FreeMemory {
  void operator()(void* memory) const noexcept {
    std::free(memory);  // NOLINT(cppcoreguidelines-*): handed over by the C library
  }
};
using OwnedNode = std::unique_ptr<std::remove_pointer_t<plist_t>, FreeNode>;

Value convert(plist_t node);

// The bytes that a scalar has in a binary list, its marker first. They tell what the library's own
// functions do not: whether a large integer is negative, and a date outside of 68 years around
// 2001.
std::string binaryForm(plist_t node) {
  char* bytes = nullptr;
  std::uint32_t length = 0;
  plist_to_bin(node, &bytes, &length);
  const std::unique_ptr<char, FreeMemory> owner(bytes);
  if (bytes == nullptr || length <= kBinaryMagic.size()) return {};
  return {bytes + kBinaryMagic.size(), length - kBinaryMagic.size()};
}

Value convertInteger(plist_t node) {
  std::uint64_t value = 0;
  plist_get_uint_val(node, &value);
  constexpr char kSixteenBytes = 0x14;
  if (value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()) &&
      binaryForm(node).starts_with(kSixteenBytes)) {
    return Number::integer(value);
  }
  return Number::integer(static_cast<std::int64_t>(value));
}

Value convertString(plist_t node) {
  std::uint64_t length = 0;
  const char* text = plist_get_string_ptr(node, &length);
  return String::create(text != nullptr ? std::string(text, length) : std::string());
}

Value convertData(plist_t node) {
  std::uint64_t length = 0;
  const char* bytes = plist_get_data_ptr(node, &length);
  return Data::create(bytes != nullptr ? std::string(bytes, length) : std::string());
}

Value convertDate(plist_t node) {
  const std::string form = binaryForm(node);
  std::uint64_t bits = 0;
  if (form.size() > sizeof bits) {
    for (std::size_t i = 1; i <= sizeof bits; ++i) {
      bits = bits << 8U | static_cast<unsigned char>(form[i]);
    }
  }
  return Date::create(kSecondsFrom1970To2001 + std::bit_cast<double>(bits));
}

Value convertArray(plist_t node) {
  std::vector<Value> elements;
  elements.reserve(plist_array_get_size(node));
  plist_array_iter iterator = nullptr;
  plist_array_new_iter(node, &iterator);
  const std::unique_ptr<void, FreeMemory> owner(iterator);
  plist_t item = nullptr;
  for (plist_array_next_item(node, iterator, &item); item != nullptr;
       plist_array_next_item(node, iterator, &item)) {
    elements.push_back(convert(item));
  }
  return Array::create(std::move(elements));
}

Value convertDictionary(plist_t node) {
  DictionaryBuilder builder;
  builder.reserve(plist_dict_get_size(node));
  plist_dict_iter iterator = nullptr;
  plist_dict_new_iter(node, &iterator);
  const std::unique_ptr<void, FreeMemory> owner(iterator);
  while (true) {
    char* key = nullptr;
    plist_t item = nullptr;
    plist_dict_next_item(node, iterator, &key, &item);
    const std::unique_ptr<char, FreeMemory> keyOwner(key);
    if (key == nullptr || item == nullptr) break;
    builder.set(std::string_view(key), convert(item));
  }
  return builder.build();
}

// Recurses no deeper than the shape was found to be.
Value convert(plist_t node) {
  switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
      std::uint8_t value = 0;
      plist_get_bool_val(node, &value);
      return Value::boolean(value != 0);
    }
    case PLIST_UINT:
      return convertInteger(node);
    case PLIST_REAL: {
      double value = 0;
      plist_get_real_val(node, &value);
      return Number::real(value);
    }
    case PLIST_STRING:
    case PLIST_KEY:
      return convertString(node);
    case PLIST_ARRAY:
      return convertArray(node);
    case PLIST_DICT:
      return convertDictionary(node);
    case PLIST_DATE:
      return convertDate(node);
    case PLIST_DATA:
      return convertData(node);
    case PLIST_UID: {
      std::uint64_t value = 0;
      plist_get_uid_val(node, &value);
      return Number::integer(static_cast<std::int64_t>(value));
    }
    default:
      return Value::null();
  }
}

}  // namespace

Result<Value> parsePropertyList(std::string_view bytes) {
  if (bytes.size() > kPropertyListBytes) return Failure{"it is too large"};
  const bool binary = bytes.starts_with(kBinaryMagic);
  if (!binary && !isUTF8(bytes)) return Failure{"it is neither UTF-8 text nor a binary list"};
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  std::string objection =
      binary ? detail::objectionToBinaryShape(bytes) : detail::objectionToXMLShape(bytes);
  if (!objection.empty()) return Failure{std::move(objection)};
  plist_t root = nullptr;
  if (binary) {
    plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
  } else {
    std::string divided = detail::withDividedTexts(bytes);
    if (!divided.empty()) bytes = divided;
    plist_from_xml(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
  }
  const OwnedNode owner(root);
  if (root == nullptr) return Failure{"it is no property list"};
  return convert(root);
}

Result<Value> readPropertyList(const std::string& path) {
  Result<std::string> bytes = readRegularFile(path, kPropertyListBytes);
  if (!bytes) return Failure{bytes.reason()};
  return parsePropertyList(*bytes);
}

}  // namespace commandfilter
