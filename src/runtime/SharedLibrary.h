// Code that is loaded at run time.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "runtime/Export.h"
#include "runtime/Result.h"
#include "runtime/SystemLibrary.h"

namespace commandfilter {

/// A loaded shared library; unloads it when it goes, unless told to keep it.
class COMMANDFILTER_EXPORT SharedLibrary {
 public:
  /// Loads the library at the path, with all its symbols bound and none shown to other libraries.
  [[nodiscard]] static Result<SharedLibrary> open(const std::string& path);

  /// Loads a library from the system's folders, by its name. Its symbols are bound when they are
  /// first used, those of its own dependencies before the program's.
  [[nodiscard]] static Result<SharedLibrary> openSystemLibrary(const SystemLibrary& library);

  SharedLibrary(SharedLibrary&& other) noexcept
      : handle_(std::exchange(other.handle_, nullptr)), kind_(other.kind_) {}
  SharedLibrary& operator=(SharedLibrary&& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(kind_, other.kind_);
    return *this;
  }
  SharedLibrary(const SharedLibrary&) = delete;
  SharedLibrary& operator=(const SharedLibrary&) = delete;
  ~SharedLibrary();

  /// The address of an exported name of this library itself, not of one that it is linked with;
  /// nullptr when there is none. In a system library, whose names are known, the look-up is not
  /// limited to the library itself.
  [[nodiscard]] const void* symbol(const char* name) const noexcept;
  /// The function of that name as a pointer of its type; nullptr as `symbol` gives it.
  template <typename Function>
  [[nodiscard]] Function function(const char* name) const noexcept {
    // POSIX promises that a function's address survives this; C++ has no other way to say it.
    return reinterpret_cast<Function>(const_cast<void*>(symbol(name)));  // NOLINT
  }
  /// A system library's functions, looked up by the constructor of `Functions`, a friend of which
  /// this class is; the library stays loaded. None when it cannot be loaded or is not complete.
  template <typename Functions>
  [[nodiscard]] static std::optional<Functions> functionsOf(const SystemLibrary& name) {
    Result<SharedLibrary> library = openSystemLibrary(name);
    if (!library) return std::nullopt;
    Functions functions(*library);
    if (!functions.isComplete()) return std::nullopt;
    library->keep();
    return functions;
  }
  /// Leaves the library loaded until the process ends; it has no symbols here afterwards.
  void keep() noexcept { handle_ = nullptr; }

 private:
  enum class Kind { Bundle, System };

  SharedLibrary(void* handle, Kind kind) noexcept : handle_(handle), kind_(kind) {}

  void* handle_;
  Kind kind_;
};

}  // namespace commandfilter
