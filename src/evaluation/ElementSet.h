// Which elements have been seen already.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "runtime/Array.h"
#include "runtime/Value.h"

namespace commandfilter {

/// A set of values by equality, with the same answers as a walk through a list of them. It borrows
/// its elements, which must outlive it. Objects of other kinds than the runtime's own decide
/// themselves what they equal, so these are walked through indeed.
class ElementSet {
 public:
  ElementSet() = default;
  /// A set of the elements of an array.
  explicit ElementSet(const Array& elements);

  void reserve(std::size_t count);
  /// True when an element equals the value.
  [[nodiscard]] bool contains(const Value& value) const;
  /// Adds the value unless an element equals it; true when it was added.
  bool insert(const Value& value);

 private:
  struct Element {
    const Value* value;
    std::size_t hash;
  };

  /// The slot of the element that equals the value, or the free one where it belongs.
  [[nodiscard]] std::size_t slotOf(const Value& value, std::size_t hash) const;
  [[nodiscard]] bool othersContain(const Value& value) const;
  void resize(std::size_t slots);

  std::vector<Element> slots_;
  std::size_t count_ = 0;
  std::vector<const Value*> others_;
};

}  // namespace commandfilter
