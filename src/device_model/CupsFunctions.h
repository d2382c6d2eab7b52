// Functions of libcups by name.
#pragma once

#include <cups/cups.h>

#include "runtime/SharedLibrary.h"

// libcups has marked its PPD functions as deprecated for years; a queue's PPD is still the only
// place for some facts.
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace commandfilter {

/// libcups, which the first call loads and nothing unloads; nullptr when there is none.
[[nodiscard]] const SharedLibrary* cupsLibrary();

/// A function of libcups as a pointer of the type that CUPS's headers declare:
/// `cupsFunction<decltype(&cupsUser)>("cupsUser")`; nullptr when there is no such library or
/// function. Each user looks up what it calls: a look-up is not cheap, and most jobs need two.
template <typename Function>
[[nodiscard]] Function cupsFunction(const char* name) {
  const SharedLibrary* library = cupsLibrary();
  return library != nullptr ? library->function<Function>(name) : nullptr;
}

}  // namespace commandfilter
