#include "runtime/BinaryPropertyListShape.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "runtime/PropertyList.h"

namespace commandfilter::detail {

namespace {

constexpr std::string_view kTooDeep = "its collections are nested too deeply";
constexpr std::string_view kTooManyValues = "it holds too many values";
constexpr std::string_view kTooLarge = "its shared parts make it too large";
constexpr std::string_view kBroken = "it is broken";

bool holdsNULUnit(std::string_view utf16) {
  for (std::size_t i = 0; i + 1 < utf16.size(); i += 2) {
    if (utf16[i] == '\0' && utf16[i + 1] == '\0') return true;
  }
  return false;
}

// A reader of a binary list's objects. Every offset is checked against the object area.
class BinaryReader {
 public:
  // An object: what it refers to, which is read one by one, and the bytes of its text or data.
  struct Object {
    bool isCollection = false;
    std::size_t references = 0;
    std::size_t firstReference = 0;
    std::size_t bytes = 0;
  };

  static std::optional<BinaryReader> open(std::string_view bytes) {
    constexpr std::size_t kHeader = 8;
    constexpr std::size_t kTrailer = 32;
    if (bytes.size() < kHeader + kTrailer) return std::nullopt;
    BinaryReader reader;
    reader.bytes_ = bytes;
    const std::size_t trailer = bytes.size() - kTrailer;
    reader.offsetSize_ = static_cast<unsigned char>(bytes[trailer + 6]);
    reader.referenceSize_ = static_cast<unsigned char>(bytes[trailer + 7]);
    reader.count_ = reader.number(trailer + 8, 8);
    reader.root_ = reader.number(trailer + 16, 8);
    reader.table_ = reader.number(trailer + 24, 8);
    reader.end_ = trailer;
    if (reader.offsetSize_ == 0 || reader.offsetSize_ > 8 || reader.referenceSize_ == 0 ||
        reader.referenceSize_ > 8 || reader.table_ > trailer || reader.root_ >= reader.count_ ||
        reader.count_ > (trailer - reader.table_) / reader.offsetSize_) {
      return std::nullopt;
    }
    return reader;
  }

  [[nodiscard]] std::size_t count() const { return count_; }
  [[nodiscard]] std::size_t root() const { return root_; }

  // None when the object is broken.
  [[nodiscard]] std::optional<Object> object(std::size_t index) const {
    const std::size_t at = number(table_ + index * offsetSize_, offsetSize_);
    if (at >= end_) return std::nullopt;
    const auto marker = static_cast<unsigned char>(bytes_[at]);
    constexpr unsigned kData = 0x4;
    constexpr unsigned kASCII = 0x5;
    constexpr unsigned kUTF16 = 0x6;
    constexpr unsigned kArray = 0xA;
    constexpr unsigned kSet = 0xC;
    constexpr unsigned kDictionary = 0xD;
    const unsigned kind = marker >> 4U;
    const bool isText = kind == kData || kind == kASCII || kind == kUTF16;
    const bool isCollection = kind == kArray || kind == kSet || kind == kDictionary;
    Object result;
    if (!isText && !isCollection) return result;
    std::size_t elements = marker & 15U;
    std::size_t first = at + 1;
    if (elements == 15) {
      if (first >= end_) return std::nullopt;
      const auto sizeMarker = static_cast<unsigned char>(bytes_[first]);
      const std::size_t size = std::size_t{1} << (sizeMarker & 3U);
      if (sizeMarker >> 4U != 1 || end_ - first <= size) return std::nullopt;
      elements = number(first + 1, size);
      first += 1 + size;
    }
    if (elements > end_) return std::nullopt;
    if (isText) {
      result.bytes = elements * (kind == kUTF16 ? 2 : 1);
      if (result.bytes > end_ - first) return std::nullopt;
      // The parser ends the process when a key holds a NUL that it did not cut off itself.
      if (kind == kUTF16 && holdsNULUnit(bytes_.substr(first, result.bytes))) return std::nullopt;
      return result;
    }
    result.isCollection = true;
    result.references = elements * (kind == kDictionary ? 2 : 1);
    result.firstReference = first;
    if (result.references > (end_ - first) / referenceSize_) return std::nullopt;
    return result;
  }

  // The object that another one refers to; none when there is no such object.
  [[nodiscard]] std::optional<std::size_t> reference(const Object& object, std::size_t i) const {
    const std::size_t index = number(object.firstReference + i * referenceSize_, referenceSize_);
    if (index >= count_) return std::nullopt;
    return index;
  }

 private:
  [[nodiscard]] std::size_t number(std::size_t at, std::size_t size) const {
    std::size_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
      value = value << 8U | static_cast<unsigned char>(bytes_[at + i]);
    }
    return value;
  }

  std::string_view bytes_;
  std::size_t offsetSize_ = 0;
  std::size_t referenceSize_ = 0;
  std::size_t count_ = 0;
  std::size_t root_ = 0;
  std::size_t table_ = 0;
  std::size_t end_ = 0;
};

// How much of something a list holds once its shared parts are written out.
struct Amount {
  std::size_t values = 0;
  std::size_t bytes = 0;
};

// What is known of an object while the list is walked.
struct Shape {
  enum class State : std::uint8_t { Unknown, Open, Known };
  State state = State::Unknown;
  int height = 0;
  Amount amount{};
};

// An object on the way from the root to the one that is looked at.
struct Visit {
  std::size_t index;
  BinaryReader::Object object;
  // What was counted before the object.
  Amount before;
  std::size_t next = 0;
};

// Walks the objects of a binary list, each one once, without recursion.
class BinaryWalk {
 public:
  explicit BinaryWalk(const BinaryReader& reader) : reader_(reader), shapes_(reader.count()) {}

  // The reason why the list is refused; empty when it is not.
  std::string_view objection() {
    std::string_view reason = enter(reader_.root());
    while (reason.empty() && !path_.empty()) {
      Visit& visit = path_.back();
      if (visit.next == visit.object.references) {
        leave();
        continue;
      }
      const auto child = reader_.reference(visit.object, visit.next++);
      if (!child) return kBroken;
      reason = meet(*child);
    }
    return reason;
  }

 private:
  std::string_view meet(std::size_t index) {
    const Shape& shape = shapes_[index];
    if (shape.state == Shape::State::Open) return "it contains itself";
    if (shape.state == Shape::State::Unknown) return enter(index);
    if (path_.size() + static_cast<std::size_t>(shape.height) > kPropertyListDepth) return kTooDeep;
    raiseHeight(shape.height);
    return add(shape.amount);
  }

  std::string_view enter(std::size_t index) {
    const auto object = reader_.object(index);
    if (!object) return kBroken;
    const Amount before = counted_;
    const std::string_view reason = add({.values = 1, .bytes = object->bytes});
    if (!reason.empty()) return reason;
    Shape& shape = shapes_[index];
    if (!object->isCollection) {
      shape = {.state = Shape::State::Known, .amount = {.values = 1, .bytes = object->bytes}};
      return {};
    }
    if (path_.size() == kPropertyListDepth) return kTooDeep;
    shape = {.state = Shape::State::Open, .height = 1};
    path_.push_back({.index = index, .object = *object, .before = before});
    return {};
  }

  void leave() {
    const Visit& visit = path_.back();
    Shape& shape = shapes_[visit.index];
    shape.state = Shape::State::Known;
    shape.amount = {.values = counted_.values - visit.before.values,
                    .bytes = counted_.bytes - visit.before.bytes};
    path_.pop_back();
    raiseHeight(shape.height);
  }

  void raiseHeight(int below) {
    if (path_.empty()) return;
    int& height = shapes_[path_.back().index].height;
    height = std::max(height, below + 1);
  }

  std::string_view add(const Amount& amount) {
    counted_.values += amount.values;
    counted_.bytes += amount.bytes;
    if (counted_.values > kPropertyListValues) return kTooManyValues;
    return counted_.bytes > kPropertyListBytes ? kTooLarge : std::string_view();
  }

  const BinaryReader& reader_;
  std::vector<Shape> shapes_;
  std::vector<Visit> path_;
  Amount counted_;
};

}  // namespace

std::string objectionToBinaryShape(std::string_view bytes) {
  const std::optional<BinaryReader> reader = BinaryReader::open(bytes);
  if (!reader) return std::string(kBroken);
  if (reader->count() > kPropertyListValues) return std::string(kTooManyValues);
  return std::string(BinaryWalk(*reader).objection());
}

}  // namespace commandfilter::detail
