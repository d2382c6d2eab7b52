#include "runtime/SizeLimits.h"

#include "runtime/Exception.h"

namespace commandfilter {

void detail::throwTooLarge() { throw Exception("a value is too large"); }

}  // namespace commandfilter
