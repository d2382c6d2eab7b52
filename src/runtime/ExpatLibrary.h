// expat, loaded when a property list is not in the plain form.
#pragma once

#include <expat.h>

#include "runtime/SharedLibrary.h"

namespace commandfilter {

/// The functions of expat that property lists in XML need. The library is not linked with it: the
/// lists that a job reads are nearly all written plainly.
class ExpatLibrary {
 public:
  /// The library, loaded on the first call and kept; nullptr when it cannot be loaded.
  [[nodiscard]] static const ExpatLibrary* shared();

  decltype(&XML_ParserCreate) createParser;
  decltype(&XML_ParserFree) freeParser;
  decltype(&XML_SetUserData) setUserData;
  decltype(&XML_SetElementHandler) setElementHandler;
  decltype(&XML_SetCharacterDataHandler) setCharacterDataHandler;
  decltype(&XML_SetStartDoctypeDeclHandler) setStartDoctypeDeclHandler;
  decltype(&XML_SetSkippedEntityHandler) setSkippedEntityHandler;
  decltype(&XML_Parse) parse;
  decltype(&XML_StopParser) stopParser;
  decltype(&XML_GetErrorCode) errorCode;
  decltype(&XML_ErrorString) errorString;
  decltype(&XML_GetCurrentByteIndex) currentByteIndex;
  decltype(&XML_GetCurrentByteCount) currentByteCount;
  decltype(&XML_GetCurrentLineNumber) currentLineNumber;
  decltype(&XML_GetCurrentColumnNumber) currentColumnNumber;

 private:
  friend class SharedLibrary;

  explicit ExpatLibrary(const SharedLibrary& library);
  [[nodiscard]] bool isComplete() const noexcept;
};

}  // namespace commandfilter
