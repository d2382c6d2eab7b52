// Counts the living objects of each class, so that tests end with none left over.
#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "runtime/Export.h"

namespace commandfilter {

class Object;

/// The counter. It counts only when the library was built with COMMANDFILTER_COUNT_OBJECTS, which
/// everything that is compiled against such a library inherits.
class COMMANDFILTER_EXPORT LiveObjects {
 public:
#ifdef COMMANDFILTER_COUNT_OBJECTS
  static constexpr bool kCounting = true;
#else
  static constexpr bool kCounting = false;
#endif

  /// Notes that the object was made.
  static void born(const Object& object) {
    if constexpr (kCounting) noteBirth(object);
  }
  /// Notes that the object is about to be destroyed.
  static void died(const Object& object) noexcept {
    if constexpr (kCounting) noteDeath(object);
  }
  /// Living objects by class name; empty when nothing is counted.
  [[nodiscard]] static std::map<std::string, std::size_t> byClass();

 private:
  static void noteBirth(const Object& object);
  static void noteDeath(const Object& object) noexcept;
};

}  // namespace commandfilter
