#include "template/status/doubles/ServiceDouble.h"

#include "runtime/Description.h"

namespace commandfilter::testing {

namespace {

constexpr std::size_t kHidden = 2;

}  // namespace

constinit const Class ServiceDouble::kClass{.name = "ServiceDouble", .base = &Object::kClass};

void ServiceDouble::answer(std::string_view selector, Value value) {
  constexpr std::string_view kObjects = "@@@@@";
  const std::size_t count = Selector(selector).argumentCount() + 1;
  answer(selector, kObjects.substr(0, count), [value](const Arguments&) { return value; });
}

bool ServiceDouble::respondsToSelector(const Selector& selector) const {
  ++questions_;
  return messages_.contains(selector.name()) || Object::respondsToSelector(selector);
}

bool ServiceDouble::conformsToProtocol(const Protocol& protocol) const {
  return (protocol_ != nullptr && includesProtocol(*protocol_, protocol)) ||
         Object::conformsToProtocol(protocol);
}

MethodSignature ServiceDouble::methodSignatureForSelector(const Selector& selector) const {
  const auto message = messages_.find(selector.name());
  return message != messages_.end() ? MethodSignature(message->second.types)
                                    : Object::methodSignatureForSelector(selector);
}

void ServiceDouble::forwardInvocation(Invocation& invocation) {
  const std::string& name = invocation.selector().name();
  Arguments arguments;
  std::string call = name;
  for (std::size_t i = kHidden; i < invocation.methodSignature().numberOfArguments(); ++i) {
    arguments.push_back(invocation.argumentAtIndex(i));
    call.append(i == kHidden ? " " : ", ").append(descriptionOf(arguments.back()));
  }
  calls_.push_back(std::move(call));
  const Answer answer = messages_.at(name).answer;
  invocation.setReturnValue(answer(arguments));
}

}  // namespace commandfilter::testing
