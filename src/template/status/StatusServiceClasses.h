// The classes of this layer that are found by name.
#pragma once

#include <span>

#include "runtime/Class.h"
#include "runtime/Export.h"

namespace commandfilter {

/// The factories of the framework's services, for the program's list of classes: services are
/// found through the registry.
[[nodiscard]] COMMANDFILTER_EXPORT std::span<const Class* const> statusServiceClasses() noexcept;

}  // namespace commandfilter
