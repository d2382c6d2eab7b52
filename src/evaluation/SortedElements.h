// The result of a sort while it grows.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "evaluation/KeyOrder.h"
#include "evaluation/PartialResult.h"
#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/ObjectMemory.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The elements of a list in the order of their keys, those without a key behind them. A new key
/// belongs in front of the first greater one; a key that equals the greatest one belongs in front
/// of the last of its equals, every other behind all of its equals. The places are worked out when
/// they are asked for.
class SortedElements final : public PartialResult {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<SortedElements> create(Ref<Array> list);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// Adds the next element of the list with its key, which may be nil.
  /// @throws Exception when the key cannot be ordered against the keys so far.
  void insertNext(Value key) {
    if (!key.isNil()) {
      // A first key is not compared with anything. All keys are of one kind, so that any of them
      // refuses another kind as every other would.
      if (key_.isNil()) {
        key_ = key;
      } else if (!canBeOrdered(key, key_)) {
        refuse(key);
      }
    }
    keys_.push_back(std::move(key));
  }
  /// The elements so far. Once asked for they are kept in order, so that asking at every element
  /// costs no more than inserting each at its place.
  [[nodiscard]] Ref<Array> elementsSoFar() override;
  /// The elements, of which no more will come.
  [[nodiscard]] Ref<Array> takeElements();

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit SortedElements(Ref<Array> list) noexcept : list_(std::move(list)) {}
  ~SortedElements() override = default;

  /// Those of a few elements are made and dropped often.
  using Keys = std::vector<Value, ObjectAllocator<Value>>;

  /// The elements at the places, and behind them those whose keys are nil.
  [[nodiscard]] Ref<Array> elementsAt(KeyPlaces places) const;
  /// Where the search puts a key among those in order, of which there is at least one.
  [[nodiscard]] std::size_t placeOf(const Value& key) const;
  void arrangeAll();
  void arrangeNext();
  // Raises what the platform raises when it compares the key with those so far.
  void refuse(const Value& key) const;

  Ref<Array> list_;
  /// The keys of the first elements of the list; of one kind.
  Keys keys_;
  /// Any of the keys but nil; nil when there is none.
  Value key_;
  /// The elements in their order when they were asked for last, how many they are, and their keys
  /// in order.
  RefPtr<Array> arranged_;
  std::size_t arrangedCount_ = 0;
  Keys arrangedKeys_;
};

}  // namespace commandfilter
