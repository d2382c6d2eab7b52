// Values as the case files write them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "runtime/Number.h"
#include "runtime/Value.h"

namespace commandfilter::testing {

/// A value as it is written: nil, null, YES, NO, 5 (a number of any encoding that is no boolean),
/// 5i (one of encoding "i"), 2.5, "text", [1, 2], {"key": 1, 2: "two"} (in order), date(seconds),
/// data(00ff), <name> (the device double of that name), <proxy name> (a proxy for the service of
/// that name), items("a", $B) (a list of unevaluated
/// items, as their trees print), raises "reason" (no value: the evaluation throws) and, for the
/// facts of a device, fails "reason".
struct Notation {
  enum class Kind {
    Nil,
    Null,
    Boolean,
    Number,
    String,
    Array,
    Dictionary,
    Date,
    Data,
    Object,
    Items,
    Raises,
    Fails,
  };

  Kind kind = Kind::Nil;
  /// With escapes: of a text, the bytes of data, a name, trees, a reason.
  std::string text{};
  /// Also a boolean, and the seconds of a date.
  Number number = Number::integer(0);
  bool hasEncoding = false;
  /// Of an array; of a dictionary, keys and values in turn.
  std::vector<Notation> elements{};

  /// Reads a value from the start of the text, and takes it away from there.
  /// @throws CaseSyntaxError when there is none.
  [[nodiscard]] static Notation read(std::string_view& text);
  /// Reads a text that is one value and nothing else.
  /// @throws CaseSyntaxError when it is not.
  [[nodiscard]] static Notation readWhole(std::string_view text);

  /// The value that is written. Objects, items and failures have none: nil.
  [[nodiscard]] Value value() const;
  /// True for a value that is the same in kind and content, in order, and in encoding where one is
  /// written.
  [[nodiscard]] bool matches(const Value& value) const;
  /// The notation again, for reports.
  [[nodiscard]] std::string print() const;
};

/// A value in the same notation, numbers with their encoding.
[[nodiscard]] std::string notationOf(const Value& value);

}  // namespace commandfilter::testing
