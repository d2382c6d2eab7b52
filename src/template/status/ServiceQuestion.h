// What a status service is asked.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "runtime/Selector.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// A feature path or a message, told by the identity of what it consists of, which is borrowed: two
/// that are the same ask the same as long as all of it is alive.
class ServiceQuestion {
 public:
  static constexpr std::size_t kMostParts = 3;

  /// Nothing that anybody asks.
  ServiceQuestion() = default;
  /// What stands at the path of the components.
  explicit ServiceQuestion(std::span<const Value> components) noexcept { setParts(components); }
  /// What the service answers to a message about the object, which is left out when it is nil or
  /// the message takes none.
  ServiceQuestion(const Selector& message, const Value& object) noexcept
      : message_(&message.name()) {
    if (!hasArgument(message) || object.isNil()) return;
    count_ = 1;
    parts_[0] = object.object();
  }

  [[nodiscard]] static bool hasArgument(const Selector& message) noexcept {
    return message.name().ends_with(':');
  }

  /// True when the answer depends on nothing but the identities: all parts are texts, which never
  /// change; of other objects the description may. In a path an empty text and "@" stand for what
  /// is current.
  [[nodiscard]] bool canBeRemembered() const noexcept {
    const auto isFixed = [this](const Object* part) {
      if (part == nullptr || part->objectKind() != ObjectKind::String) return false;
      const std::string_view text = static_cast<const String&>(*part).view();
      return message_ != nullptr || !(text.empty() || text == "@");
    };
    return (message_ != nullptr || count_ != 0) && count_ <= kMostParts &&
           std::all_of(parts_.begin(), parts_.begin() + count_, isFixed);
  }
  /// nullptr behind the last one.
  [[nodiscard]] const Object* part(std::size_t index) const noexcept { return parts_[index]; }
  [[nodiscard]] std::size_t hash() const noexcept {
    const auto bits = [](const void* address) { return reinterpret_cast<std::uintptr_t>(address); };
    const std::uintptr_t sum =
        bits(message_) + bits(parts_[0]) + bits(parts_[1]) * 3U + bits(parts_[2]) * 5U;
    // Addresses differ in few bits; all of them take part.
    constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15U;
    return static_cast<std::size_t>((sum * kGoldenRatio) >> 40U);
  }
  // Written out, because comparing arrays would call the C library for three words.
  friend bool operator==(const ServiceQuestion& left, const ServiceQuestion& right) noexcept {
    return left.message_ == right.message_ && left.count_ == right.count_ &&
           left.parts_[0] == right.parts_[0] && left.parts_[1] == right.parts_[1] &&
           left.parts_[2] == right.parts_[2];
  }

 private:
  void setParts(std::span<const Value> parts) noexcept {
    count_ = parts.size();
    // Written out, so that the parts of a question need not stand in memory.
    if (count_ > 0) parts_[0] = parts[0].object();
    if (count_ > 1) parts_[1] = parts[1].object();
    if (count_ > 2) parts_[2] = parts[2].object();
    static_assert(kMostParts == 3);
  }

  /// The message's name, which is one address; nullptr for a path.
  const void* message_ = nullptr;
  std::size_t count_ = 0;
  std::array<const Object*, kMostParts> parts_{};
};

}  // namespace commandfilter
