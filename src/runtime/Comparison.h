// Equality, hashes and order of values.
#pragma once

#include <compare>
#include <cstddef>

#include "runtime/Export.h"
#include "runtime/Value.h"

namespace commandfilter {

namespace detail {

// Equality of an object with another value.
[[nodiscard]] COMMANDFILTER_EXPORT bool objectEquals(const Value& left, const Value& right);

}  // namespace detail

/// Value equality: numbers by mathematical value, strings by characters, collections element by
/// element; nil equals only nil, the null object only itself.
[[nodiscard]] inline bool equal(const Value& left, const Value& right) {
  if (left.isNumber()) return right.isNumber() && left.number() == right.number();
  return left.isIdenticalTo(right) || (left.isObject() && detail::objectEquals(left, right));
}

/// Equal values have equal hashes.
[[nodiscard]] COMMANDFILTER_EXPORT std::size_t hashOf(const Value& value);

/// The order of number with number, string with string (by 16-bit code unit), date with date.
/// @throws Exception for every other pair.
[[nodiscard]] COMMANDFILTER_EXPORT std::weak_ordering compare(const Value& left,
                                                              const Value& right);

}  // namespace commandfilter
