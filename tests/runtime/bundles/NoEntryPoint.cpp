// Exports something, but no entry point.
#include "runtime/Export.h"

extern "C" COMMANDFILTER_EXPORT int something() { return 1; }
