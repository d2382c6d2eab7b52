// A value, or why there is none.
#pragma once

#include <cassert>
#include <optional>
#include <string>
#include <utility>

namespace commandfilter {

/// Why a file, a bundle or a device gave nothing: one sentence for a person.
struct Failure {
  std::string reason;
};

/// What an operation on the outside world gives: a T or a Failure. It cannot be ignored; inside
/// the expression language, failures are recorded on the context instead.
template <typename T>
class [[nodiscard]] Result {
 public:
  Result(T value) : value_(std::move(value)) {}
  Result(Failure failure) : reason_(std::move(failure.reason)) {}

  [[nodiscard]] explicit operator bool() const noexcept { return value_.has_value(); }
  /// Only for a success.
  [[nodiscard]] T& operator*() noexcept {
    assert(value_.has_value());
    return *value_;
  }
  [[nodiscard]] T* operator->() noexcept { return &**this; }
  /// Empty for a success.
  [[nodiscard]] const std::string& reason() const noexcept { return reason_; }

 private:
  std::optional<T> value_;
  std::string reason_;
};

}  // namespace commandfilter
