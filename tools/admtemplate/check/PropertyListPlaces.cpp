#include "check/PropertyListPlaces.h"

#include <algorithm>

#include "UnitPlace.h"
#include "runtime/PropertyList.h"

namespace commandfilter::tools {

namespace {

constexpr std::size_t kMostDuplicates = 1000;

}  // namespace

// Follows the reading of the file.
class PlacesReader final : public PropertyListObserver {
 public:
  explicit PlacesReader(PropertyListPlaces& places) : places_(places) {}

  void begin(Part part, std::size_t place) override {
    if (part == Part::Key) {
      key_.clear();
      keyPlace_ = {place, place};
    }
    open_.push_back({part, part == Part::Key ? Places::kNone : addNode(place)});
  }

  void append(std::string_view text, std::size_t place) override {
    if (open_.back().part == Part::Key) {
      key_.append(text);
      return;
    }
    Node& node = places_.nodes_[open_.back().node];
    std::vector<Places::Piece>& pieces = places_.pieces_;
    const bool continues =
        node.pieceCount > 0 && pieces.back().place + (node.length - pieces.back().offset) == place;
    if (!continues) {
      pieces.push_back({node.length, place});
      ++node.pieceCount;
    }
    node.length += text.size();
  }

  void end(std::size_t place) override {
    const Open part = open_.back();
    open_.pop_back();
    if (part.part == Part::Key) {
      keyPlace_.end = place;
    } else {
      places_.nodes_[part.node].content.end = place;
    }
  }

 private:
  using Places = PropertyListPlaces;
  using Node = Places::Node;

  // A part that has not ended, and its node; a key has none.
  struct Open {
    Part part;
    std::size_t node;
  };

  // A node below the collection that is open. What stands in an array has no key of its own, and
  // nobody asks for it.
  std::size_t addNode(std::size_t place) {
    Node node;
    node.parent = open_.empty() ? Places::kNone : open_.back().node;
    node.key = std::move(key_);
    node.keyPlace = keyPlace_;
    node.content = {place, place};
    node.firstPiece = places_.pieces_.size();
    places_.nodes_.push_back(std::move(node));
    key_.clear();
    return places_.nodes_.size() - 1;
  }

  Places& places_;
  std::vector<Open> open_;
  std::string key_;
  ByteRange keyPlace_;
};

PropertyListPlaces::PropertyListPlaces(std::string_view bytes) {
  PlacesReader reader(*this);
  if (!parsePropertyList(bytes, &reader)) {
    nodes_.clear();
    return;
  }
  // Of keys that stand twice, the last counts. The nodes do not move any more.
  for (std::size_t i = 0; i < nodes_.size(); ++i) {
    const Node& node = nodes_[i];
    if (node.parent == kNone) continue;
    std::size_t& child = children_.try_emplace({node.parent, node.key}, kNone).first->second;
    if (child != kNone && !node.key.empty() && duplicates_.size() < kMostDuplicates) {
      Duplicate duplicate{{}, nodes_[child].keyPlace};
      for (std::size_t part = i; nodes_[part].parent != kNone; part = nodes_[part].parent) {
        duplicate.keys.insert(duplicate.keys.begin(), nodes_[part].key);
      }
      duplicates_.push_back(std::move(duplicate));
    }
    child = i;
  }
}

std::size_t PropertyListPlaces::find(const KeyPath& path) const {
  if (nodes_.empty()) return kNone;
  std::size_t node = 0;
  for (const std::string& key : path.keys()) {
    const auto child = children_.find({node, key});
    if (child == children_.end()) return kNone;
    node = child->second;
  }
  return node;
}

std::optional<ByteRange> PropertyListPlaces::ofKey(const KeyPath& path) const {
  const std::size_t node = find(path);
  if (node == kNone) return std::nullopt;
  return nodes_[node].keyPlace;
}

std::size_t PropertyListPlaces::placeOf(const Node& node, std::size_t offset) const {
  if (node.pieceCount == 0 || offset >= node.length) return node.content.end;
  const auto first = pieces_.begin() + static_cast<std::ptrdiff_t>(node.firstPiece);
  const auto behind = std::upper_bound(
      first, first + static_cast<std::ptrdiff_t>(node.pieceCount), offset,
      [](std::size_t wanted, const Piece& piece) { return wanted < piece.offset; });
  const Piece& piece = *std::prev(behind);
  return piece.place + (offset - piece.offset);
}

std::optional<ByteRange> PropertyListPlaces::ofText(const KeyPath& path, std::string_view text,
                                                    const SourceRange& range) const {
  const std::size_t index = find(path);
  if (index == kNone) return std::nullopt;
  const Node& node = nodes_[index];
  // Of another text than the file's, only the beginning is sure.
  if (text.size() != node.length) {
    return ByteRange{node.content.begin, node.content.begin};
  }
  const std::size_t begin = byteOfUnit(text, range.begin);
  const std::size_t end = byteOfUnit(text, range.end);
  const std::size_t place = placeOf(node, begin);
  return ByteRange{place, std::max(place, placeOf(node, end))};
}

}  // namespace commandfilter::tools
