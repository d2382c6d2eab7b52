// A status service whose answers a test writes down.
#pragma once

#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "runtime/Class.h"
#include "runtime/Invocation.h"
#include "runtime/MethodSignature.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/Selector.h"
#include "runtime/Value.h"
#include "runtime/ValueVector.h"

namespace commandfilter::testing {

/// Answers the messages that it was told, of any types, and notes which ones came. It may claim to
/// conform to a protocol.
class ServiceDouble final : public Object {
 public:
  static const Class kClass;
  using Arguments = ValueVector;
  using Answer = std::function<Value(const Arguments& arguments)>;

  [[nodiscard]] static Ref<ServiceDouble> create() { return make<ServiceDouble>(); }

  /// Adds a message. `types` are the codes of the result and of each argument, which stay alive.
  void answer(std::string_view selector, std::string_view types, Answer answer) {
    messages_.insert_or_assign(std::string(selector), Message{types, std::move(answer)});
  }
  /// Adds a message that takes and gives objects, with the same answer always.
  void answer(std::string_view selector, Value value);
  void claim(const Protocol& protocol) { protocol_ = &protocol; }

  /// "selector" or "selector argument, argument" for each message that came.
  [[nodiscard]] const std::vector<std::string>& calls() const noexcept { return calls_; }
  void forgetCalls() { calls_.clear(); }
  /// How often it was asked whether it answers a message.
  [[nodiscard]] int questions() const noexcept { return questions_; }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] bool respondsToSelector(const Selector& selector) const override;
  [[nodiscard]] bool conformsToProtocol(const Protocol& protocol) const override;
  [[nodiscard]] MethodSignature methodSignatureForSelector(const Selector& selector) const override;
  void forwardInvocation(Invocation& invocation) override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  struct Message {
    std::string_view types;
    Answer answer;
  };

  ServiceDouble() = default;
  ~ServiceDouble() override = default;

  std::map<std::string, Message> messages_;
  const Protocol* protocol_ = nullptr;
  std::vector<std::string> calls_;
  mutable int questions_ = 0;
};

}  // namespace commandfilter::testing
