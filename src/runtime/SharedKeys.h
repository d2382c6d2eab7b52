// Strings of keys that occur often.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/TextEquality.h"

namespace commandfilter::detail {

/// Makes keys that occur again one string, which compares faster and takes no more memory. Each key
/// has one place, which another may take over.
class SharedKeys {
 public:
  /// The string of the text, which is well-formed UTF-8.
  Ref<String> key(std::string_view text) {
    RefPtr<String>& recent = keys_[placeHash(text) % kCount];
    if (!recent || !sameText(recent->view(), text)) recent = String::ofUTF8(text);
    return Ref<String>(*recent);
  }

 private:
  static constexpr std::size_t kCount = 64;

  std::array<RefPtr<String>, kCount> keys_;
};

}  // namespace commandfilter::detail
