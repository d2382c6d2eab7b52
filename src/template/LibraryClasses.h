// The classes of the library that are found by name.
#pragma once

#include <span>

#include "runtime/Class.h"
#include "runtime/Export.h"

namespace commandfilter {

/// The classes that templates and the filter name: the contexts of values, the service for
/// executors, and the classes of this layer.
[[nodiscard]] COMMANDFILTER_EXPORT std::span<const Class* const> templateClasses() noexcept;

/// Registers the classes of the whole library, those of the runtime included, until the process
/// ends; for the start of a program.
COMMANDFILTER_EXPORT void registerLibraryClasses();

}  // namespace commandfilter
