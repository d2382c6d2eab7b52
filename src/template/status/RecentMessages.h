// How a service answers to the messages that were asked last.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "runtime/MethodSignature.h"
#include "runtime/Selector.h"
#include "runtime/Value.h"

namespace commandfilter {

/// What a proxy wants to know about a message.
struct MessageForm {
  /// No service answers to the message.
  constexpr MessageForm() noexcept = default;
  explicit MessageForm(const MethodSignature& signature) noexcept {
    // The receiver and the selector come before a message's own arguments.
    constexpr std::size_t kHidden = 2;
    const std::size_t count = signature.numberOfArguments() - kHidden;
    isAnswered = true;
    takesArgument = count > 0;
    isKept = count <= 1 && signature.methodReturnType() == "@" &&
             (count == 0 || signature.argumentTypeAtIndex(kHidden) == "@");
  }

  bool isAnswered = false;
  bool takesArgument = false;
  /// The answer is kept: it is an object, and so is what the message is about.
  bool isKept = false;
};

/// Remembers a few messages that a service answers to: asking it, which may look through its
/// description or ask another object, costs more than finding the answer that is kept. The service
/// is kept alive, so that its address stands for nothing else.
class RecentMessages {
 public:
  [[nodiscard]] MessageForm formFor(const Value& service, const Selector& selector) const noexcept {
    const Entry& entry = entries_[placeOf(selector)];
    const bool isSame = entry.name == &selector.name() && entry.service.isIdenticalTo(service);
    return isSame ? entry.form : MessageForm();
  }
  void remember(const Value& service, const Selector& selector, MessageForm form) {
    entries_[placeOf(selector)] = {&selector.name(), service, form};
  }
  void forget() noexcept { entries_ = {}; }

 private:
  static constexpr std::size_t kPlaces = 16;

  struct Entry {
    const void* name = nullptr;
    Value service;
    MessageForm form;
  };

  [[nodiscard]] static std::size_t placeOf(const Selector& selector) noexcept {
    const auto bits = reinterpret_cast<std::uintptr_t>(&selector.name());
    // Names lie at multiples of 16, so the lowest bits tell nothing.
    return (bits >> 4U ^ bits >> 9U) % kPlaces;
  }

  std::array<Entry, kPlaces> entries_;
};

}  // namespace commandfilter
