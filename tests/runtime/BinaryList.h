// Writes binary property lists, broken ones too.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace commandfilter::testing {

/// The objects of a list, each with its index as its name; the first is the root.
class BinaryList {
 public:
  static constexpr std::size_t kReferenceSize = 4;

  /// An object given by all of its bytes.
  BinaryList& add(std::string_view bytes) {
    objects_.emplace_back(bytes);
    return *this;
  }
  BinaryList& addString(std::string_view text) {
    return add(sized('\x50', text.size()).append(text));
  }
  BinaryList& addArray(const std::vector<std::size_t>& elements) {
    return add(sized('\xA0', elements.size()).append(references(elements)));
  }
  BinaryList& addDictionary(const std::vector<std::size_t>& keys,
                            const std::vector<std::size_t>& values) {
    return add(sized('\xD0', keys.size()).append(references(keys)).append(references(values)));
  }
  /// A number of so many bytes, the highest first.
  [[nodiscard]] static std::string number(std::uint64_t value, std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t i = size; i-- != 0; value >>= 8U) bytes[i] = static_cast<char>(value & 0xFFU);
    return bytes;
  }

  /// The whole list.
  [[nodiscard]] std::string bytes() const {
    std::string list = "bplist00";
    std::string table;
    for (const std::string& object : objects_) {
      table += number(list.size(), kOffsetSize);
      list += object;
    }
    const std::size_t tableStart = list.size();
    return list + table + trailer(kOffsetSize, kReferenceSize, objects_.size(), 0, tableStart);
  }
  [[nodiscard]] static std::string trailer(std::size_t offsetSize, std::size_t referenceSize,
                                           std::uint64_t count, std::uint64_t root,
                                           std::uint64_t table) {
    return std::string(6, '\0') + number(offsetSize, 1) + number(referenceSize, 1) +
           number(count, 8) + number(root, 8) + number(table, 8);
  }

 private:
  static constexpr std::size_t kOffsetSize = 4;

  // A marker with a count.
  static std::string sized(char marker, std::size_t count) {
    constexpr std::size_t kLong = 15;
    const auto withBits = [marker](std::size_t bits) {
      return std::string(1, static_cast<char>(static_cast<unsigned char>(marker) | bits));
    };
    if (count < kLong) return withBits(count);
    return withBits(kLong) + '\x12' + number(count, 4);
  }
  static std::string references(const std::vector<std::size_t>& objects) {
    std::string bytes;
    for (const std::size_t object : objects) bytes += number(object, kReferenceSize);
    return bytes;
  }

  std::vector<std::string> objects_;
};

}  // namespace commandfilter::testing
