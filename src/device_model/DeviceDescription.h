// Descriptions of simulated devices.
#pragma once

#include <string>
#include <string_view>

#include "runtime/Dictionary.h"
#include "runtime/Ref.h"
#include "runtime/Result.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The scheme of the URIs that name a device description.
inline constexpr std::string_view kSimulatedScheme = "simulated://";

/// The file of a `simulated:///path` URI, with its percent escapes resolved.
[[nodiscard]] Result<std::string> pathOfSimulatedURI(std::string_view uri);

/// A device description from a property-list value; fails, naming the entry, when one is of
/// another kind than the description's format says. Entries that the format does not name are
/// ignored.
[[nodiscard]] Result<Ref<Dictionary>> checkedDeviceDescription(const Value& list);

/// The same from a file; the reason names the file.
[[nodiscard]] Result<Ref<Dictionary>> readDeviceDescription(const std::string& path);

}  // namespace commandfilter
