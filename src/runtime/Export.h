// The one export macro of the library.
#pragma once

/// Marks what plug-ins and tools may use; everything else stays hidden inside the library.
/// A class that crosses a library boundary (its virtual table, its `kClass`) needs it as a whole.
#define COMMANDFILTER_EXPORT __attribute__((visibility("default")))
