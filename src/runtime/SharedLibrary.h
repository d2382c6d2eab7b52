// Code that is loaded at run time.
#pragma once

#include <string>
#include <utility>

#include "runtime/Export.h"
#include "runtime/Result.h"

namespace commandfilter {

/// A loaded shared library; unloads it when it goes, unless told to keep it.
class COMMANDFILTER_EXPORT SharedLibrary {
 public:
  /// Loads the library at the path, with all its symbols bound and none shown to other libraries.
  [[nodiscard]] static Result<SharedLibrary> open(const std::string& path);

  /// Loads a library by its name, such as "libcups.so.2", from the system's folders.
  [[nodiscard]] static Result<SharedLibrary> openSystemLibrary(const char* name);

  SharedLibrary(SharedLibrary&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  SharedLibrary& operator=(SharedLibrary&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  SharedLibrary(const SharedLibrary&) = delete;
  SharedLibrary& operator=(const SharedLibrary&) = delete;
  ~SharedLibrary();

  /// The address of an exported name of this library itself, not of one that it is linked with;
  /// nullptr when there is none.
  [[nodiscard]] const void* symbol(const char* name) const noexcept;
  /// Leaves the library loaded until the process ends; it has no symbols here afterwards.
  void keep() noexcept { handle_ = nullptr; }

 private:
  explicit SharedLibrary(void* handle) noexcept : handle_(handle) {}
  void* handle_;
};

}  // namespace commandfilter
