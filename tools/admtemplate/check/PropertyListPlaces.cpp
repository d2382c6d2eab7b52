#include "check/PropertyListPlaces.h"

#include <algorithm>

#include "UnitPlace.h"
#include "check/XMLParser.h"

namespace commandfilter::tools {

namespace {

constexpr std::size_t kMostDuplicates = 1000;

// The offset in the text as XML has it, with each end of a line as one line feed.
std::size_t offsetInXML(std::string_view text, std::size_t offset) {
  std::size_t left = 0;
  for (std::size_t at = text.find('\r'); at < offset; at = text.find('\r', at + 1)) {
    if (at + 1 < text.size() && text[at + 1] == '\n') ++left;
  }
  return offset - left;
}

}  // namespace

// Follows the parser through the file.
class PlacesReader {
 public:
  explicit PlacesReader(PropertyListPlaces& places) : places_(places), parser_(newXMLParser()) {
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(
        parser_.get(),
        [](void* self, const XML_Char* name, const XML_Char** /*attributes*/) {
          static_cast<PlacesReader*>(self)->begin(name);
        },
        [](void* self, const XML_Char* /*name*/) { static_cast<PlacesReader*>(self)->end(); });
    XML_SetCharacterDataHandler(parser_.get(), [](void* self, const XML_Char* text, int length) {
      static_cast<PlacesReader*>(self)->append({text, static_cast<std::size_t>(length)});
    });
  }

  bool read(std::string_view bytes) { return parseXML(parser_, bytes); }

 private:
  using Places = PropertyListPlaces;
  using Node = Places::Node;

  // An element that is open: a collection or text with its node, a key, or anything else.
  struct Element {
    enum class Kind { Collection, Text, Key, Other };
    Kind kind;
    std::size_t node = Places::kNone;
  };

  [[nodiscard]] std::size_t here() const {
    return static_cast<std::size_t>(XML_GetCurrentByteIndex(parser_.get()));
  }
  [[nodiscard]] std::size_t behind() const {
    return here() + static_cast<std::size_t>(XML_GetCurrentByteCount(parser_.get()));
  }

  void begin(std::string_view name) {
    if (name == "plist") {
      open_.push_back({Element::Kind::Other});
    } else if (name == "key") {
      key_.clear();
      keyPlace_ = {behind(), behind()};
      open_.push_back({Element::Kind::Key});
    } else {
      const bool isCollection = name == "dict" || name == "array";
      const std::size_t node = addNode();
      open_.push_back({isCollection ? Element::Kind::Collection : Element::Kind::Text, node});
    }
  }

  // A node below the collection that is open. What stands in an array has no key of its own, and
  // nobody asks for it.
  std::size_t addNode() {
    Node node;
    node.parent = open_.empty() ? Places::kNone : open_.back().node;
    node.key = std::move(key_);
    node.keyPlace = keyPlace_;
    node.content = {behind(), behind()};
    node.firstPiece = places_.pieces_.size();
    places_.nodes_.push_back(std::move(node));
    key_.clear();
    return places_.nodes_.size() - 1;
  }

  void append(std::string_view text) {
    if (open_.empty()) return;
    if (open_.back().kind == Element::Kind::Key) key_.append(text);
    if (open_.back().kind != Element::Kind::Text) return;
    Node& node = places_.nodes_[open_.back().node];
    std::vector<Places::Piece>& pieces = places_.pieces_;
    const bool continues =
        node.pieceCount > 0 && pieces.back().place + (node.length - pieces.back().offset) == here();
    if (!continues) {
      pieces.push_back({node.length, here()});
      ++node.pieceCount;
    }
    node.length += text.size();
  }

  void end() {
    const Element element = open_.back();
    open_.pop_back();
    if (element.kind == Element::Kind::Key) keyPlace_.end = here();
    if (element.node != Places::kNone) places_.nodes_[element.node].content.end = here();
  }

  Places& places_;
  XMLParser parser_;
  std::vector<Element> open_;
  std::string key_;
  ByteRange keyPlace_;
};

PropertyListPlaces::PropertyListPlaces(std::string_view bytes) {
  if (bytes.starts_with("bplist") || !PlacesReader(*this).read(bytes)) {
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
  // Two readers of one file may differ; then only the beginning is sure.
  if (offsetInXML(text, text.size()) != node.length) {
    return ByteRange{node.content.begin, node.content.begin};
  }
  const std::size_t begin = offsetInXML(text, byteOfUnit(text, range.begin));
  const std::size_t end = offsetInXML(text, byteOfUnit(text, range.end));
  const std::size_t place = placeOf(node, begin);
  return ByteRange{place, std::max(place, placeOf(node, end))};
}

std::string xmlFault(std::string_view bytes) {
  if (bytes.starts_with("bplist")) return {};
  const XMLParser parser = newXMLParser();
  if (parseXML(parser, bytes)) return {};
  return "line " + std::to_string(XML_GetCurrentLineNumber(parser.get())) + ", column " +
         std::to_string(XML_GetCurrentColumnNumber(parser.get()) + 1) + ": " +
         XML_ErrorString(XML_GetErrorCode(parser.get()));
}

}  // namespace commandfilter::tools
