// Strings of keys that occur often.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "runtime/Ref.h"
#include "runtime/String.h"

namespace commandfilter::detail {

/// Makes keys that occur again one string, which compares faster and takes no more memory. Each key
/// has one place, which another may take over.
class SharedKeys {
 public:
  /// The string of the text, which is well-formed UTF-8.
  Ref<String> key(std::string_view text) {
    RefPtr<String>& recent = keys_[placeOf(text)];
    if (!recent || recent->view() != text) recent = String::create(text);
    return Ref<String>(*recent);
  }

 private:
  static constexpr std::size_t kCount = 64;

  static std::size_t placeOf(std::string_view text) {
    if (text.empty()) return 0;
    const auto unit = [text](std::size_t at) -> std::size_t {
      return static_cast<unsigned char>(text[at]);
    };
    const std::size_t mixed =
        text.size() + 3 * unit(0) + 5 * unit(text.size() / 2) + 7 * unit(text.size() - 1);
    return mixed % kCount;
  }

  std::array<RefPtr<String>, kCount> keys_;
};

}  // namespace commandfilter::detail
