// An owned file descriptor.
#pragma once

#include <utility>

#include "runtime/Export.h"

namespace commandfilter {

/// Closes its descriptor when it goes.
class COMMANDFILTER_EXPORT FileDescriptor {
 public:
  /// Owns nothing.
  FileDescriptor() noexcept = default;
  /// Takes over an open descriptor; -1 owns nothing.
  explicit FileDescriptor(int descriptor) noexcept : descriptor_(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept
      : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor();

  [[nodiscard]] explicit operator bool() const noexcept { return descriptor_ >= 0; }
  [[nodiscard]] int get() const noexcept { return descriptor_; }
  /// Gives the descriptor up to the caller.
  [[nodiscard]] int release() noexcept { return std::exchange(descriptor_, -1); }

 private:
  int descriptor_ = -1;
};

}  // namespace commandfilter
