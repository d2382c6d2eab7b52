#include "runtime/ICULibrary.h"

#include <unicode/uvernum.h>

#include <string>

namespace commandfilter {

namespace {

// The library of the version that the headers describe; its functions bear the version, too.
constexpr const char* kLibrary = "libicuuc.so." U_ICU_VERSION_SHORT;

template <typename Function>
Function functionNamed(const SharedLibrary& library, std::string name) {
  if (U_DISABLE_RENAMING == 0) name.append("_" U_ICU_VERSION_SHORT);
  return library.function<Function>(name.c_str());
}

}  // namespace

ICULibrary::ICULibrary(const SharedLibrary& library)
    : charType(functionNamed<decltype(charType)>(library, "u_charType")),
      openCaseMap(functionNamed<decltype(openCaseMap)>(library, "ucasemap_open")),
      closeCaseMap(functionNamed<decltype(closeCaseMap)>(library, "ucasemap_close")),
      toLower(functionNamed<decltype(toLower)>(library, "ucasemap_utf8ToLower")),
      toUpper(functionNamed<decltype(toUpper)>(library, "ucasemap_utf8ToUpper")) {}

bool ICULibrary::isComplete() const noexcept {
  return charType != nullptr && openCaseMap != nullptr && closeCaseMap != nullptr &&
         toLower != nullptr && toUpper != nullptr;
}

const ICULibrary* ICULibrary::shared() {
  static const auto functions = SharedLibrary::functionsOf<ICULibrary>({kLibrary});
  return functions ? &*functions : nullptr;
}

}  // namespace commandfilter
