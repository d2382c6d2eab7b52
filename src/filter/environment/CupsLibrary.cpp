#include "filter/environment/CupsLibrary.h"

#include <optional>

namespace commandfilter {

namespace {

template <typename Function>
Function functionNamed(const SharedLibrary& library, const char* name) {
  // POSIX promises that a function's address survives this; C++ has no other way to say it.
  return reinterpret_cast<Function>(const_cast<void*>(library.symbol(name)));  // NOLINT
}

}  // namespace

CupsLibrary::CupsLibrary(const SharedLibrary& library)
    : getPPD(functionNamed<decltype(getPPD)>(library, "cupsGetPPD")),
      ppdOpen(functionNamed<decltype(ppdOpen)>(library, "ppdOpenFile")),
      ppdCloseFile(functionNamed<decltype(ppdCloseFile)>(library, "ppdClose")),
      ppdFindAttribute(functionNamed<decltype(ppdFindAttribute)>(library, "ppdFindAttr")),
      sideChannelDoRequest(
          functionNamed<decltype(sideChannelDoRequest)>(library, "cupsSideChannelDoRequest")),
      sideChannelRead(functionNamed<decltype(sideChannelRead)>(library, "cupsSideChannelRead")) {}

bool CupsLibrary::isComplete() const noexcept {
  return getPPD != nullptr && ppdOpen != nullptr && ppdCloseFile != nullptr &&
         ppdFindAttribute != nullptr && sideChannelDoRequest != nullptr &&
         sideChannelRead != nullptr;
}

const CupsLibrary* CupsLibrary::shared() {
  static const std::optional<CupsLibrary> functions = []() -> std::optional<CupsLibrary> {
    Result<SharedLibrary> library = SharedLibrary::openSystemLibrary(kLibcups);
    if (!library) return std::nullopt;
    CupsLibrary found(*library);
    if (!found.isComplete()) return std::nullopt;
    library->keep();
    return found;
  }();
  return functions ? &*functions : nullptr;
}

}  // namespace commandfilter
