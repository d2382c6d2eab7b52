// What a library or a bundle hands over when it is loaded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/LiveObjects.h"
#include "runtime/Object.h"
#include "runtime/Value.h"

namespace commandfilter {

/// The version of the binary interface between the library and what it loads. It changes whenever
/// code that was compiled against an older version would misread the library's objects.
inline constexpr std::uint32_t kInterfaceVersion = 3;

/// A module's classes, with what its code took for granted when it was compiled. A bundle exports
/// one constant of this type named `command_filter_module`, made with `moduleOf`.
struct Module {
  std::uint32_t magic;
  std::uint32_t interfaceVersion;
  std::uint32_t layout;
  std::uint32_t classCount;
  const Class* const* classes;

  /// The sizes that inline code depends on, and whether it counts objects.
  static constexpr std::uint32_t kLayout = sizeof(Class) << 16U | sizeof(Object) << 8U |
                                           sizeof(Value) << 1U | (LiveObjects::kCounting ? 1U : 0U);
  static constexpr std::uint32_t kMagic = 0x434d4446;

  /// False for a module of another version of the interface. Reads no more than the first words,
  /// whose places never change.
  [[nodiscard]] bool matches() const noexcept {
    return magic == kMagic && interfaceVersion == kInterfaceVersion && layout == kLayout;
  }
  [[nodiscard]] std::span<const Class* const> classList() const noexcept {
    return {classes, classCount};
  }
};

/// The module of a list of classes, which must live as long as the code does.
template <std::size_t Count>
[[nodiscard]] constexpr Module moduleOf(const Class* const (&classes)[Count]) {
  return {Module::kMagic, kInterfaceVersion, Module::kLayout, Count, classes};
}

}  // namespace commandfilter

/// The entry point of a bundle. The first class of the list is the principal class of a bundle
/// whose property list names none.
extern "C" COMMANDFILTER_EXPORT const commandfilter::Module command_filter_module;
