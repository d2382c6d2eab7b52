#include "runtime/Send.h"

#include <string>

#include "runtime/Class.h"
#include "runtime/Exception.h"
#include "runtime/Invocation.h"
#include "runtime/StackGuard.h"
#include "runtime/ValueVector.h"

namespace commandfilter {

namespace {

Value call(const Method& method, const Value& receiver, std::span<const Value> arguments) {
  if (arguments.size() + 1 != method.types.size()) {
    throw Exception(std::string(method.selector) + " was sent with " +
                    std::to_string(arguments.size()) + " arguments");
  }
  return method.invoke(receiver, arguments);
}

[[noreturn]] void throwUnrecognized(const Class& info, const Selector& selector) {
  throw Exception(std::string(info.name) + ": unrecognized selector " + selector.name());
}

constexpr std::size_t kHidden = 2;

// What the receiver gives for a message that its class has no method for.
MethodSignature signatureOf(const Value& receiver, const Selector& selector) {
  const Object* object = receiver.object();
  const MethodSignature signature =
      object != nullptr ? object->methodSignatureForSelector(selector) : MethodSignature();
  if (!signature) throwUnrecognized(*classOf(receiver), selector);
  return signature;
}

// Hands over the message, for which the class has no method.
Value forward(const Value& receiver, const Selector& selector, const MethodSignature& signature,
              std::span<const Value> arguments) {
  // Objects that forward to each other would do so until the stack is used up.
  StackGuard::check();
  Invocation invocation(signature, receiver, selector, arguments);
  receiver.object()->forwardInvocation(invocation);
  return invocation.returnValue();
}

}  // namespace

Value send(const Value& receiver, const Selector& selector, std::span<const Value> arguments) {
  const Class* info = classOf(receiver);
  if (info == nullptr) return {};
  if (const Method* method = info->instanceMethod(selector)) {
    return call(*method, receiver, arguments);
  }
  return forward(receiver, selector, signatureOf(receiver, selector), arguments);
}

Value performSelector(const Value& receiver, const Selector& selector, const Value& object) {
  const Class* info = classOf(receiver);
  if (info == nullptr) return {};
  const Method* method = info->instanceMethod(selector);
  const MethodSignature signature =
      method != nullptr ? MethodSignature(method->types) : signatureOf(receiver, selector);
  const auto run = [&](std::span<const Value> arguments) {
    return method != nullptr ? method->invoke(receiver, arguments)
                             : forward(receiver, selector, signature, arguments);
  };
  const std::size_t count = signature.numberOfArguments() - kHidden;
  if (count == 0) return run({});
  if (count == 1) return run(std::span(&object, 1));
  ValueVector arguments(count);
  arguments.front() = object;
  return run(arguments);
}

Value sendToClass(const Class& receiver, const Selector& selector,
                  std::initializer_list<Value> arguments) {
  const Method* method = receiver.classMethod(selector);
  if (method == nullptr) throwUnrecognized(receiver, selector);
  return call(*method, Value(), {arguments.begin(), arguments.size()});
}

Value instantiate(const Class& info, const Selector& initializer,
                  std::initializer_list<Value> arguments) {
  const Method* method = info.initializer(initializer);
  if (method == nullptr) return {};
  return call(*method, Value(), {arguments.begin(), arguments.size()});
}

bool respondsToSelector(const Value& receiver, const Selector& selector) {
  if (const Object* object = receiver.object()) return object->respondsToSelector(selector);
  const Class* info = classOf(receiver);
  return info != nullptr && info->instanceMethod(selector) != nullptr;
}

bool conformsToProtocol(const Value& receiver, const Protocol& protocol) {
  const Object* object = receiver.object();
  return object != nullptr && object->conformsToProtocol(protocol);
}

MethodSignature methodSignatureForSelector(const Value& receiver, const Selector& selector) {
  if (const Object* object = receiver.object()) return object->methodSignatureForSelector(selector);
  const Class* info = classOf(receiver);
  const Method* method = info != nullptr ? info->instanceMethod(selector) : nullptr;
  return method != nullptr ? MethodSignature(method->types) : MethodSignature();
}

}  // namespace commandfilter
