// Functions of libcups by name.
#pragma once

#include <cups/cups.h>

// libcups has marked its PPD functions as deprecated for years; a queue's PPD is still the only
// place for some facts.
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace commandfilter {

/// The address of a function of libcups, which the first call loads and nothing unloads; nullptr
/// when there is no such library or function. Each user looks up what it calls: a look-up is not
/// cheap, and most jobs need two functions.
[[nodiscard]] void* cupsFunctionNamed(const char* name);

/// The same as a pointer of the type that CUPS's headers declare:
/// `cupsFunction<decltype(&cupsUser)>("cupsUser")`.
template <typename Function>
[[nodiscard]] Function cupsFunction(const char* name) {
  // POSIX promises that a function's address survives this; C++ has no other way to say it.
  return reinterpret_cast<Function>(cupsFunctionNamed(name));  // NOLINT
}

}  // namespace commandfilter
