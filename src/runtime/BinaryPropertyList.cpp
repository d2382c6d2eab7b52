#include "runtime/BinaryPropertyList.h"

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "runtime/Array.h"
#include "runtime/BinaryPropertyListShape.h"
#include "runtime/Data.h"
#include "runtime/Date.h"
#include "runtime/Dictionary.h"
#include "runtime/PlistLibrary.h"
#include "runtime/String.h"

namespace commandfilter::detail {

namespace {

// Property lists count dates from 2001-01-01.
constexpr double kSecondsFrom1970To2001 = 978307200.0;

struct FreeMemory {
  void operator()(void* memory) const noexcept {
    std::free(memory);  // NOLINT(cppcoreguidelines-*): handed over by the C library
  }
};

// Makes values of the library's nodes. Recurses no deeper than the shape was found to be.
class Conversion {
 public:
  explicit Conversion(const PlistLibrary& library) : library_(library) {}

  Value convert(plist_t node) const {
    switch (library_.nodeType(node)) {
      case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        library_.booleanOf(node, &value);
        return Value::boolean(value != 0);
      }
      case PLIST_UINT:
        return convertInteger(node);
      case PLIST_REAL: {
        double value = 0;
        library_.realOf(node, &value);
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
        library_.uidOf(node, &value);
        return Number::integer(static_cast<std::int64_t>(value));
      }
      default:
        return Value::null();
    }
  }

 private:
  // The bytes that a scalar has in a binary list, its marker first. They tell what the library's
  // own functions do not: whether a large integer is negative, and a date outside of 68 years
  // around 2001.
  std::string binaryForm(plist_t node) const {
    char* bytes = nullptr;
    std::uint32_t length = 0;
    library_.toBinary(node, &bytes, &length);
    const std::unique_ptr<char, FreeMemory> owner(bytes);
    if (bytes == nullptr || length <= kBinaryMagic.size()) return {};
    return {bytes + kBinaryMagic.size(), length - kBinaryMagic.size()};
  }

  Value convertInteger(plist_t node) const {
    std::uint64_t value = 0;
    library_.integerOf(node, &value);
    constexpr char kSixteenBytes = 0x14;
    if (value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()) &&
        binaryForm(node).starts_with(kSixteenBytes)) {
      return Number::integer(value);
    }
    return Number::integer(static_cast<std::int64_t>(value));
  }

  Value convertString(plist_t node) const {
    std::uint64_t length = 0;
    const char* text = library_.stringOf(node, &length);
    return String::create(text != nullptr ? std::string(text, length) : std::string());
  }

  Value convertData(plist_t node) const {
    std::uint64_t length = 0;
    const char* bytes = library_.dataOf(node, &length);
    return Data::create(bytes != nullptr ? std::string(bytes, length) : std::string());
  }

  Value convertDate(plist_t node) const {
    const std::string form = binaryForm(node);
    std::uint64_t bits = 0;
    if (form.size() > sizeof bits) {
      for (std::size_t i = 1; i <= sizeof bits; ++i) {
        bits = bits << 8U | static_cast<unsigned char>(form[i]);
      }
    }
    return Date::create(kSecondsFrom1970To2001 + std::bit_cast<double>(bits));
  }

  Value convertArray(plist_t node) const {
    ValueVector elements;
    elements.reserve(library_.arraySize(node));
    plist_array_iter iterator = nullptr;
    library_.newArrayIterator(node, &iterator);
    const std::unique_ptr<void, FreeMemory> owner(iterator);
    plist_t item = nullptr;
    for (library_.nextArrayItem(node, iterator, &item); item != nullptr;
         library_.nextArrayItem(node, iterator, &item)) {
      elements.push_back(convert(item));
    }
    return Array::create(std::move(elements));
  }

  Value convertDictionary(plist_t node) const {
    DictionaryBuilder builder;
    builder.reserve(library_.dictionarySize(node));
    plist_dict_iter iterator = nullptr;
    library_.newDictionaryIterator(node, &iterator);
    const std::unique_ptr<void, FreeMemory> owner(iterator);
    while (true) {
      char* key = nullptr;
      plist_t item = nullptr;
      library_.nextDictionaryItem(node, iterator, &key, &item);
      const std::unique_ptr<char, FreeMemory> keyOwner(key);
      if (key == nullptr || item == nullptr) break;
      builder.set(std::string_view(key), convert(item));
    }
    return builder.build();
  }

  const PlistLibrary& library_;
};

}  // namespace

Result<Value> parseBinaryPropertyList(std::string_view bytes) {
  if (std::string objection = objectionToBinaryShape(bytes); !objection.empty()) {
    return Failure{std::move(objection)};
  }
  const PlistLibrary* library = PlistLibrary::shared();
  if (library == nullptr) {
    return Failure{"it is binary, and libplist, which reads such lists, cannot be loaded"};
  }
  plist_t root = nullptr;
  library->fromBinary(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
  const auto free = [library](plist_t node) { library->free(node); };
  const std::unique_ptr<std::remove_pointer_t<plist_t>, decltype(free)> owner(root, free);
  if (root == nullptr) return Failure{"it is no property list"};
  return Conversion(*library).convert(root);
}

}  // namespace commandfilter::detail
