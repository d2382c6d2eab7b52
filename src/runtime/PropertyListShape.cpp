#include "runtime/PropertyListShape.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "runtime/PropertyList.h"

namespace commandfilter::detail {

namespace {

constexpr std::string_view kTooDeep = "its collections are nested too deeply";
constexpr std::string_view kBroken = "it is broken";

// Skips what `<` begins when that is no element: a comment, character data, a declaration. Gives
// the offset behind it, or `start` when an element begins there.
std::size_t skipMarkup(std::string_view text, std::size_t start) {
  const auto behind = [text, start](std::string_view end) {
    const std::size_t found = text.find(end, start);
    return found == std::string_view::npos ? text.size() : found + end.size();
  };
  const std::string_view rest = text.substr(start);
  if (rest.starts_with("<!--")) return behind("-->");
  if (rest.starts_with("<![CDATA[")) return behind("]]>");
  if (rest.starts_with("<?")) return behind("?>");
  return start;
}

// A reader of a binary list's objects. Every offset is checked against the object area.
class BinaryReader {
 public:
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

  // The objects that the object refers to; none when it is broken.
  [[nodiscard]] std::optional<std::vector<std::size_t>> children(std::size_t object) const {
    std::vector<std::size_t> result;
    const std::size_t at = number(table_ + object * offsetSize_, offsetSize_);
    if (at >= end_) return std::nullopt;
    const auto marker = static_cast<unsigned char>(bytes_[at]);
    const unsigned kind = marker >> 4U;
    constexpr unsigned kArray = 0xA;
    constexpr unsigned kSet = 0xC;
    constexpr unsigned kDictionary = 0xD;
    if (kind != kArray && kind != kSet && kind != kDictionary) return result;
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
    const std::size_t references = elements * (kind == kDictionary ? 2 : 1);
    if (elements > end_ || references > (end_ - first) / referenceSize_) return std::nullopt;
    result.reserve(references);
    for (std::size_t i = 0; i < references; ++i) {
      const std::size_t child = number(first + i * referenceSize_, referenceSize_);
      if (child >= count_) return std::nullopt;
      result.push_back(child);
    }
    return result;
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

// What is known of an object while the list is walked.
struct Shape {
  enum class State : std::uint8_t { Unknown, Open, Known };
  State state = State::Unknown;
  int height = 0;
  std::size_t values = 0;
};

struct Visit {
  std::size_t object;
  std::vector<std::size_t> children;
  std::size_t next = 0;
};

}  // namespace

std::string objectionToXMLShape(std::string_view text) {
  int depth = 0;
  for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at)) {
    const std::size_t behind = skipMarkup(text, at);
    if (behind != at) {
      at = behind;
      continue;
    }
    const std::string_view rest = text.substr(at + 1);
    if (rest.starts_with("dict") || rest.starts_with("array")) {
      const std::size_t end = text.find('>', at);
      const bool closed = end != std::string_view::npos && text[end - 1] == '/';
      if (!closed && ++depth > kPropertyListDepth) return std::string(kTooDeep);
    } else if (rest.starts_with("/dict") || rest.starts_with("/array")) {
      --depth;
    }
    ++at;
  }
  return {};
}

std::string objectionToBinaryShape(std::string_view bytes) {
  const std::optional<BinaryReader> reader = BinaryReader::open(bytes);
  if (!reader) return std::string(kBroken);
  std::vector<Shape> shapes(reader->count());
  std::vector<Visit> path;
  const auto enter = [&](std::size_t object) {
    auto children = reader->children(object);
    if (!children) return false;
    shapes[object].state = Shape::State::Open;
    shapes[object].values = 1;
    path.push_back({object, std::move(*children)});
    return true;
  };
  if (!enter(reader->root())) return std::string(kBroken);
  while (!path.empty()) {
    Visit& visit = path.back();
    Shape& shape = shapes[visit.object];
    if (visit.next == visit.children.size()) {
      shape.state = Shape::State::Known;
      if (shape.height > kPropertyListDepth) return std::string(kTooDeep);
      path.pop_back();
      continue;
    }
    const std::size_t child = visit.children[visit.next];
    const Shape& below = shapes[child];
    if (below.state == Shape::State::Open) return "it contains itself";
    if (below.state == Shape::State::Unknown) {
      if (path.size() > static_cast<std::size_t>(kPropertyListDepth)) return std::string(kTooDeep);
      if (!enter(child)) return std::string(kBroken);
      continue;
    }
    ++visit.next;
    shape.height = std::max(shape.height, below.height + 1);
    shape.values += below.values;
    if (shape.values > kPropertyListValues) return "its shared parts make it too large";
  }
  return {};
}

}  // namespace commandfilter::detail
