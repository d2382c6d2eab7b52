// The names of an iteration, found once.
#pragma once

#include "runtime/Selector.h"

namespace commandfilter {

/// The selectors that the contexts of lists answer themselves.
struct IterationNames {
  Selector element{"element"};
  Selector identifier{"identifier"};
  Selector index{"index"};
  Selector initial{"initial"};
};

[[nodiscard]] inline const IterationNames& iterationNames() {
  static const IterationNames names;
  return names;
}

}  // namespace commandfilter
