#include "device_model/CupsFunctions.h"

#include <optional>
#include <utility>

namespace commandfilter {

const SharedLibrary* cupsLibrary() {
  // Never destroyed: unloading libcups at the end of the process would be work for nothing.
  static const auto& library = *new std::optional<SharedLibrary>(  // NOLINT
      []() -> std::optional<SharedLibrary> {
        Result<SharedLibrary> opened = SharedLibrary::openSystemLibrary(kLibcups);
        if (!opened) return std::nullopt;
        return std::move(*opened);
      }());
  return library ? &*library : nullptr;
}

}  // namespace commandfilter
