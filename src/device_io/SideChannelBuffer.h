// Room for an answer of the side channel.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace commandfilter {

/// Zero-filled bytes. Memory that nothing is written to is not used up, however long the buffer is.
class SideChannelBuffer {
 public:
  explicit SideChannelBuffer(std::size_t length) noexcept
      // Nothing else leaves zeros that nobody writes to out of memory.
      // NOLINTNEXTLINE(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
      : bytes_(static_cast<char*>(std::calloc(length, 1))), length_(length) {}

  /// False when there was no memory.
  [[nodiscard]] explicit operator bool() const noexcept { return bytes_ != nullptr; }
  [[nodiscard]] char* data() const noexcept { return bytes_.get(); }
  [[nodiscard]] std::size_t length() const noexcept { return length_; }

 private:
  struct Free {
    void operator()(char* bytes) const noexcept { std::free(bytes); }  // NOLINT
  };

  std::unique_ptr<char, Free> bytes_;
  std::size_t length_;
};

}  // namespace commandfilter
