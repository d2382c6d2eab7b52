// Calls what no library has.
#include "runtime/Export.h"

extern "C" int nothing_has_this_name();
extern "C" COMMANDFILTER_EXPORT int something() { return nothing_has_this_name(); }
