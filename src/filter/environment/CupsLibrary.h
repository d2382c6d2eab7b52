// libcups, loaded when the first question for it comes.
#pragma once

#include <cups/cups.h>
#include <cups/ppd.h>
#include <cups/sidechannel.h>

#include "runtime/SharedLibrary.h"

// libcups has marked its PPD functions as deprecated for years; a queue's PPD is still the only
// place for some facts.
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace commandfilter {

/// The functions of libcups that the filter calls. The program is not linked with it: loading it
/// and the thirty libraries behind it costs more than everything else that a job does, and most
/// jobs ask nothing of it.
class CupsLibrary {
 public:
  /// The library, loaded on the first call and kept; nullptr when it cannot be loaded.
  [[nodiscard]] static const CupsLibrary* shared();

  decltype(&cupsGetPPD) getPPD;
  decltype(&ppdOpenFile) ppdOpen;
  decltype(&ppdClose) ppdCloseFile;
  decltype(&ppdFindAttr) ppdFindAttribute;
  decltype(&cupsSideChannelDoRequest) sideChannelDoRequest;
  decltype(&cupsSideChannelRead) sideChannelRead;

 private:
  friend class SharedLibrary;

  explicit CupsLibrary(const SharedLibrary& library);
  [[nodiscard]] bool isComplete() const noexcept;
};

}  // namespace commandfilter
