// The values that a macro was called with.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <span>
#include <utility>

#include "runtime/Array.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

/// A list of values, nil included. A few of them, which is what nearly every call has, take no
/// memory of their own.
class ArgumentValues {
 public:
  ArgumentValues() noexcept {}  // NOLINT(modernize-use-equals-default): a union has none
  ArgumentValues(const ArgumentValues&) = delete;
  ArgumentValues& operator=(const ArgumentValues&) = delete;
  ~ArgumentValues() {
    if (!many_) std::destroy_n(few_.begin(), count_);
  }

  /// Makes room for all values, before the first is appended.
  void reserve(std::size_t count) {
    if (count > few_.size()) many_ = std::make_unique<Value[]>(count);  // NOLINT: its size is known
  }
  /// Appends the value that the function makes, which may throw.
  template <typename Make>
  void append(Make&& make) {
    if (many_) [[unlikely]] {
      many_[count_] = make();
    } else {
      // Built in its place: it is one of those that exist from now on.
      new (&few_[count_]) Value(make());  // NOLINT(cppcoreguidelines-owning-memory)
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
    ValueVector values;
    values.reserve(count_);
    for (const Value& value : all()) values.push_back(value.orNull());
    return Array::create(std::move(values));
  }

 private:
  [[nodiscard]] std::span<const Value> all() const noexcept {
    return {many_ ? many_.get() : few_.data(), count_};
  }

  std::size_t count_ = 0;
  // Only the first `count_` exist, and none beside many.
  union {
    std::array<Value, 2> few_;
  };
  // All of them when there are more than a few.
  std::unique_ptr<Value[]> many_;  // NOLINT: its size is known
};

}  // namespace commandfilter
