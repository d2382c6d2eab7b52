#include "runtime/ICULibrary.h"

#include <unicode/uvernum.h>

#include <optional>
#include <string>

namespace commandfilter {

namespace {

// The library of the version that the headers describe; its functions bear the version, too.
constexpr const char* kLibrary = "libicuuc.so." U_ICU_VERSION_SHORT;

template <typename Function>
Function functionNamed(const SharedLibrary& library, std::string name) {
  if (U_DISABLE_RENAMING == 0) name.append("_" U_ICU_VERSION_SHORT);
  // POSIX promises that a function's address survives this; C++ has no other way to say it.
  return reinterpret_cast<Function>(const_cast<void*>(library.symbol(name.c_str())));  // NOLINT
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
  static const std::optional<ICULibrary> functions = []() -> std::optional<ICULibrary> {
    Result<SharedLibrary> library = SharedLibrary::openSystemLibrary({kLibrary});
    if (!library) return std::nullopt;
    ICULibrary found(*library);
    if (!found.isComplete()) return std::nullopt;
    library->keep();
    return found;
  }();
  return functions ? &*functions : nullptr;
}

}  // namespace commandfilter
