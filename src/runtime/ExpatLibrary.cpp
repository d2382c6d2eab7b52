#include "runtime/ExpatLibrary.h"

namespace commandfilter {

ExpatLibrary::ExpatLibrary(const SharedLibrary& library)
    : createParser(library.function<decltype(createParser)>("XML_ParserCreate")),
      freeParser(library.function<decltype(freeParser)>("XML_ParserFree")),
      setUserData(library.function<decltype(setUserData)>("XML_SetUserData")),
      setElementHandler(library.function<decltype(setElementHandler)>("XML_SetElementHandler")),
      setCharacterDataHandler(
          library.function<decltype(setCharacterDataHandler)>("XML_SetCharacterDataHandler")),
      setStartDoctypeDeclHandler(
          library.function<decltype(setStartDoctypeDeclHandler)>("XML_SetStartDoctypeDeclHandler")),
      setSkippedEntityHandler(
          library.function<decltype(setSkippedEntityHandler)>("XML_SetSkippedEntityHandler")),
      parse(library.function<decltype(parse)>("XML_Parse")),
      stopParser(library.function<decltype(stopParser)>("XML_StopParser")),
      errorCode(library.function<decltype(errorCode)>("XML_GetErrorCode")),
      errorString(library.function<decltype(errorString)>("XML_ErrorString")),
      currentByteIndex(library.function<decltype(currentByteIndex)>("XML_GetCurrentByteIndex")),
      currentByteCount(library.function<decltype(currentByteCount)>("XML_GetCurrentByteCount")),
      currentLineNumber(library.function<decltype(currentLineNumber)>("XML_GetCurrentLineNumber")),
      currentColumnNumber(
          library.function<decltype(currentColumnNumber)>("XML_GetCurrentColumnNumber")) {}

bool ExpatLibrary::isComplete() const noexcept {
  return createParser != nullptr && freeParser != nullptr && setUserData != nullptr &&
         setElementHandler != nullptr && setCharacterDataHandler != nullptr &&
         setStartDoctypeDeclHandler != nullptr && setSkippedEntityHandler != nullptr &&
         parse != nullptr && stopParser != nullptr && errorCode != nullptr &&
         errorString != nullptr && currentByteIndex != nullptr && currentByteCount != nullptr &&
         currentLineNumber != nullptr && currentColumnNumber != nullptr;
}

const ExpatLibrary* ExpatLibrary::shared() {
  static const auto functions = SharedLibrary::functionsOf<ExpatLibrary>({"libexpat.so.1"});
  return functions ? &*functions : nullptr;
}

}  // namespace commandfilter
