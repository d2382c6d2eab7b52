// ICU, loaded when a text is not ASCII.
#pragma once

#include <unicode/ucasemap.h>
#include <unicode/uchar.h>

#include "runtime/SharedLibrary.h"

namespace commandfilter {

/// The functions of ICU that texts need. The library is not linked with: loading it adds a tenth to
/// a job, and most jobs see nothing but ASCII.
class ICULibrary {
 public:
  /// The library, loaded on the first call and kept; nullptr when it cannot be loaded.
  [[nodiscard]] static const ICULibrary* shared();

  decltype(&u_charType) charType;
  decltype(&ucasemap_open) openCaseMap;
  decltype(&ucasemap_close) closeCaseMap;
  decltype(&ucasemap_utf8ToLower) toLower;
  decltype(&ucasemap_utf8ToUpper) toUpper;

 private:
  friend class SharedLibrary;

  explicit ICULibrary(const SharedLibrary& library);
  [[nodiscard]] bool isComplete() const noexcept;
};

}  // namespace commandfilter
