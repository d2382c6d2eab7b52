// A status service that answers from a device description.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "device_model/FeatureTable.h"
#include "runtime/Class.h"
#include "runtime/Dictionary.h"
#include "runtime/Invocation.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"

namespace commandfilter {

/// Answers the messages and features that the description of a service lists, and no others, so
/// that what a real device does not offer can be described too. Its class has no methods: every
/// message is forwarded.
class SimulatedStatusService final : public Object {
 public:
  static const Class kClass;
  /// How many arguments a described message may have.
  static constexpr std::size_t kMostArguments = 32;
  /// A message about a feature. Its own affair.
  struct FeatureMessage;

  /// A service of a checked description. It claims to conform to the protocol, nullptr for none,
  /// though a C++ call through its interface is not possible.
  [[nodiscard]] static Ref<SimulatedStatusService> create(const Dictionary& description,
                                                          const Protocol* protocol);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] bool respondsToSelector(const Selector& selector) const override;
  [[nodiscard]] bool conformsToProtocol(const Protocol& protocol) const override;
  [[nodiscard]] MethodSignature methodSignatureForSelector(const Selector& selector) const override;
  void forwardInvocation(Invocation& invocation) override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  SimulatedStatusService(RefPtr<Dictionary> messages, std::optional<FeatureTable> features,
                         const Protocol* protocol)
      : messages_(std::move(messages)), features_(std::move(features)), protocol_(protocol) {}
  ~SimulatedStatusService() override = default;

  /// How it answers a message: with what is described, or about a feature, or not at all.
  struct Answer {
    const std::string* message = nullptr;
    const Value* described = nullptr;
    const FeatureMessage* feature = nullptr;
  };
  [[nodiscard]] const Answer& answerTo(const Selector& selector) const;

  RefPtr<Dictionary> messages_;
  std::optional<FeatureTable> features_;
  const Protocol* protocol_;
  /// Some of the answers, which never change: whoever sends a message asks first whether there is
  /// one. Another message may take over a place.
  mutable std::array<Answer, 16> answers_;
};

}  // namespace commandfilter
