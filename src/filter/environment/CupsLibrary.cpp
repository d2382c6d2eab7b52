#include "filter/environment/CupsLibrary.h"

namespace commandfilter {

CupsLibrary::CupsLibrary(const SharedLibrary& library)
    : getPPD(library.function<decltype(getPPD)>("cupsGetPPD")),
      ppdOpen(library.function<decltype(ppdOpen)>("ppdOpenFile")),
      ppdCloseFile(library.function<decltype(ppdCloseFile)>("ppdClose")),
      ppdFindAttribute(library.function<decltype(ppdFindAttribute)>("ppdFindAttr")),
      sideChannelDoRequest(
          library.function<decltype(sideChannelDoRequest)>("cupsSideChannelDoRequest")),
      sideChannelRead(library.function<decltype(sideChannelRead)>("cupsSideChannelRead")) {}

bool CupsLibrary::isComplete() const noexcept {
  return getPPD != nullptr && ppdOpen != nullptr && ppdCloseFile != nullptr &&
         ppdFindAttribute != nullptr && sideChannelDoRequest != nullptr &&
         sideChannelRead != nullptr;
}

const CupsLibrary* CupsLibrary::shared() {
  static const auto functions = SharedLibrary::functionsOf<CupsLibrary>(kLibcups);
  return functions ? &*functions : nullptr;
}

}  // namespace commandfilter
