#include "device_model/CupsFunctions.h"

#include <optional>
#include <utility>

#include "runtime/SharedLibrary.h"

namespace commandfilter {

void* cupsFunctionNamed(const char* name) {
  // Never destroyed: unloading libcups at the end of the process would be work for nothing.
  static const auto& library = *new std::optional<SharedLibrary>(  // NOLINT
      []() -> std::optional<SharedLibrary> {
        Result<SharedLibrary> opened = SharedLibrary::openSystemLibrary(kLibcups);
        if (!opened) return std::nullopt;
        return std::move(*opened);
      }());
  return library ? const_cast<void*>(library->symbol(name)) : nullptr;  // NOLINT
}

}  // namespace commandfilter
