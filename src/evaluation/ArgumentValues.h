// The values that a macro was called with.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "runtime/Array.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// A list of values, nil included. A few of them, which is what nearly every call has, take no
/// memory of their own.
class ArgumentValues {
 public:
  /// Makes room for all values, before the first is appended.
  void reserve(std::size_t count) {
    if (count > few_.size()) many_.reserve(count);
  }
  void append(Value value) {
    if (many_.capacity() != 0) {
      many_.push_back(std::move(value));
    } else {
      few_[count_] = std::move(value);
    }
    ++count_;
  }

  [[nodiscard]] std::size_t count() const noexcept { return count_; }
  /// nil behind the last one.
  [[nodiscard]] Value valueAt(std::size_t index) const {
    return index < count_ ? all()[index] : Value();
  }
  /// All of them, with the null object for nil.
  [[nodiscard]] Ref<Array> array() const {
    std::vector<Value> values;
    values.reserve(count_);
    for (const Value& value : all()) values.push_back(value.orNull());
    return Array::create(std::move(values));
  }

 private:
  [[nodiscard]] std::span<const Value> all() const noexcept {
    return {many_.empty() ? few_.data() : many_.data(), count_};
  }

  std::size_t count_ = 0;
  std::array<Value, 2> few_;
  std::vector<Value> many_;
};

}  // namespace commandfilter
