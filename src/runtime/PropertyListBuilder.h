// The values of an XML property list, made while it is read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "runtime/PropertyList.h"
#include "runtime/SharedKeys.h"
#include "runtime/Value.h"
#include "runtime/ValueVector.h"

namespace commandfilter::detail {

/// Puts together what a reader finds. What is complete waits on one stack for the collection around
/// it: its elements, or its keys and values by turns. Whoever reads asks before each part whether
/// it may come now.
class PropertyListBuilder {
 public:
  enum class Collection : std::uint8_t { Array, Dictionary };

  PropertyListBuilder() {
    constexpr std::size_t kUsualDepth = 16;
    constexpr std::size_t kUsualValues = 64;
    open_.reserve(kUsualDepth);
    complete_.reserve(kUsualValues);
  }

  /// True when no collection is open.
  [[nodiscard]] bool isOutside() const noexcept { return open_.empty(); }
  [[nodiscard]] bool isInDictionary() const noexcept {
    return !isOutside() && open_.back().collection == Collection::Dictionary;
  }
  /// True where a dictionary goes on with a key or ends.
  [[nodiscard]] bool wantsKey() const noexcept {
    return isInDictionary() && contentOfOpen() % 2 == 0;
  }
  /// True when the value of the whole list is complete.
  [[nodiscard]] bool isComplete() const noexcept { return isOutside() && !complete_.empty(); }
  /// True when a list may not hold another key or value.
  [[nodiscard]] bool isFull() const noexcept { return parts_ == kPropertyListValues; }
  /// True when a list may not be nested more deeply.
  [[nodiscard]] bool isDeepest() const noexcept { return open_.size() == kPropertyListDepth; }

  void begin(Collection collection) {
    ++parts_;
    open_.push_back({collection, complete_.size()});
  }
  /// A key, which is well-formed UTF-8.
  void addKey(std::string_view key) {
    ++parts_;
    complete_.emplace_back(sharedKeys_.key(key));
  }
  /// A value that is no collection.
  void add(Value value);
  /// Ends the collection that began last. False when its last key has no value.
  [[nodiscard]] bool end();

  /// The value of the whole list, once it is complete.
  [[nodiscard]] Value take() { return std::move(complete_.front()); }

 private:
  // A collection that is open, and where its content begins.
  struct Open {
    Collection collection;
    std::size_t first;
  };

  [[nodiscard]] std::size_t contentOfOpen() const noexcept {
    return complete_.size() - open_.back().first;
  }

  std::vector<Open> open_;
  ValueVector complete_;
  std::size_t parts_ = 0;
  SharedKeys sharedKeys_;
};

}  // namespace commandfilter::detail
