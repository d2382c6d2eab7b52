#include "runtime/Exception.h"

namespace commandfilter {

// Out of line, so that the type's identity lives in this library alone.
Exception::~Exception() = default;

}  // namespace commandfilter
