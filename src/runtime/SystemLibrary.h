// Libraries of the system that are loaded when they are needed.
#pragma once

#include <array>
#include <span>

namespace commandfilter {

/// A library, as `SharedLibrary::openSystemLibrary` takes it.
struct SystemLibrary {
  /// Its name, such as "libcups.so.2".
  const char* name;
  /// Libraries that it is linked with, which are to be loaded before it and stay. The loader looks
  /// for each symbol of a library in all that are loaded with it, so loading large ones in parts
  /// takes less time. One that is not there is left out.
  std::span<const char* const> parts = {};
};

namespace detail {

inline constexpr std::array kLibcupsParts{"libgnutls.so.30", "libgssapi_krb5.so.2",
                                          "libavahi-client.so.3"};

}  // namespace detail

/// CUPS. Its parts are those of Debian 12; where it is linked with others, loading it takes longer.
inline constexpr SystemLibrary kLibcups{"libcups.so.2", detail::kLibcupsParts};

}  // namespace commandfilter
