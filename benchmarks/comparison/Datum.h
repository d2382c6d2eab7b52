#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace commandfilter::benchmarks {

// A piece of data that belongs to none of the compared programs. What goes into them is made from
// it, and what comes out is turned back into it to be compared.
struct Datum {
  using List = std::vector<Datum>;
  using Map = std::vector<std::pair<Datum, Datum>>;

  Datum() = default;                                                   // nil
  Datum(std::string text) : content(std::move(text)) {}                // NOLINT
  Datum(const char* text) : content(std::string(text)) {}              // NOLINT
  Datum(std::int64_t integer) : content(integer) {}                    // NOLINT
  Datum(int integer) : content(static_cast<std::int64_t>(integer)) {}  // NOLINT
  Datum(List list) : content(std::move(list)) {}                       // NOLINT
  Datum(Map map) : content(std::move(map)) {}                          // NOLINT

  // The keys of a map, nested ones as well, in one order.
  void sortKeys();

  friend bool operator==(const Datum&, const Datum&) = default;

  std::variant<std::monostate, std::string, std::int64_t, List, Map> content;
};

// For messages; what is long is cut.
std::string describe(const Datum& datum);

}  // namespace commandfilter::benchmarks
