#include "WrittenSize.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>

#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Data.h"
#include "runtime/Dictionary.h"
#include "runtime/Exception.h"
#include "runtime/PropertyList.h"
#include "runtime/SizeLimits.h"
#include "runtime/String.h"

namespace commandfilter::tools {

namespace {

// What one value needs besides its text.
constexpr std::size_t kBytesOfAPart = 32;

struct Size {
  std::size_t bytes = kBytesOfAPart;
  int depth = 0;

  // Sizes stop at twice the limit: sums of two stay far below what a number holds.
  void add(const Size& part) {
    bytes = std::min(bytes + part.bytes, 2 * kLargestText);
    depth = std::max(depth, part.depth + 1);
  }
};

class Measurement {
 public:
  Size sizeOf(const Value& value, int depth) {
    if (depth > kPropertyListDepth) throw Exception("nested too deeply");
    if (const auto* string = castTo<String>(value)) {
      return {kBytesOfAPart + string->view().size()};
    }
    if (const auto* data = castTo<Data>(value)) return {kBytesOfAPart + data->bytes().size()};
    if (const auto* array = castTo<Array>(value)) {
      return remembered(*array, [&] { return sizeOfArray(*array, depth); });
    }
    if (const auto* dictionary = castTo<Dictionary>(value)) {
      return remembered(*dictionary, [&] { return sizeOfDictionary(*dictionary, depth); });
    }
    return {};
  }

 private:
  template <typename Measure>
  Size remembered(const Object& collection, Measure&& measure) {
    const auto known = known_.find(&collection);
    if (known != known_.end()) return known->second;
    const Size size = measure();
    known_.emplace(&collection, size);
    return size;
  }

  Size sizeOfArray(const Array& array, int depth) {
    Size size;
    for (const Value& element : array) size.add(sizeOf(element, depth + 1));
    return size;
  }
  Size sizeOfDictionary(const Dictionary& dictionary, int depth) {
    Size size;
    for (const DictionaryEntry& entry : dictionary) {
      size.add(sizeOf(entry.key, depth + 1));
      size.add(sizeOf(entry.value, depth + 1));
    }
    return size;
  }

  std::unordered_map<const Object*, Size> known_;
};

}  // namespace

void requireWritable(const Value& value) {
  const Size size = Measurement().sizeOf(value, 0);
  if (size.depth > kPropertyListDepth) throw Exception("nested too deeply");
  if (size.bytes > kLargestText) throw Exception("a value is too large");
}

}  // namespace commandfilter::tools
