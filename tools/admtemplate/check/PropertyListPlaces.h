// Where the parts of a property list stand in its file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "check/ByteRange.h"
#include "check/KeyPath.h"
#include "evaluation/protocol/SourceRange.h"

namespace commandfilter::tools {

/// The places of keys and texts in an XML property list, also where entities, CDATA sections,
/// comments and line ends of other systems make a text longer than what it stands for.
class PropertyListPlaces {
 public:
  /// A key that stands in its dictionary more than once.
  struct Duplicate {
    /// From the root on.
    std::vector<std::string> keys;
    ByteRange place;
  };

  /// Empty for what is no property list in XML.
  explicit PropertyListPlaces(std::string_view bytes);

  /// The text of the key that the path ends with; none when it is not known.
  [[nodiscard]] std::optional<ByteRange> ofKey(const KeyPath& path) const;
  /// A part of the text that stands under the path. `text` is the whole text, and the range counts
  /// its 16-bit units.
  [[nodiscard]] std::optional<ByteRange> ofText(const KeyPath& path, std::string_view text,
                                                const SourceRange& range) const;
  /// The first of the keys that stand twice, up to a limit.
  [[nodiscard]] const std::vector<Duplicate>& duplicates() const noexcept { return duplicates_; }

 private:
  friend class PlacesReader;

  static constexpr std::size_t kNone = SIZE_MAX;

  // A run of a text that stands in the file as it is.
  struct Piece {
    /// Bytes of the text before the run.
    std::size_t offset;
    std::size_t place;
  };
  struct Node {
    std::size_t parent = kNone;
    std::string key;
    ByteRange keyPlace;
    /// What stands between the tags.
    ByteRange content;
    std::size_t firstPiece = 0;
    std::size_t pieceCount = 0;
    /// Bytes of the text.
    std::size_t length = 0;
  };
  struct ChildHash {
    std::size_t operator()(const std::pair<std::size_t, std::string_view>& child) const noexcept {
      return std::hash<std::string_view>{}(child.second) * 31 + child.first;
    }
  };

  [[nodiscard]] std::size_t find(const KeyPath& path) const;
  [[nodiscard]] std::size_t placeOf(const Node& node, std::size_t offset) const;

  std::vector<Node> nodes_;
  std::vector<Piece> pieces_;
  std::unordered_map<std::pair<std::size_t, std::string_view>, std::size_t, ChildHash> children_;
  std::vector<Duplicate> duplicates_;
};

}  // namespace commandfilter::tools
