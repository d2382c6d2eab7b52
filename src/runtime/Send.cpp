#include "runtime/Send.h"

#include <string>
#include <vector>

#include "runtime/Class.h"
#include "runtime/Exception.h"
#include "runtime/Invocation.h"
#include "runtime/StackGuard.h"

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

}  // namespace

Value send(const Value& receiver, const Selector& selector, std::span<const Value> arguments) {
  const Class* info = classOf(receiver);
  if (info == nullptr) return {};
  if (const Method* method = info->instanceMethod(selector)) {
    return call(*method, receiver, arguments);
  }
  Object* object = receiver.object();
  if (object == nullptr) throwUnrecognized(*info, selector);
  const MethodSignature signature = object->methodSignatureForSelector(selector);
  if (!signature) throwUnrecognized(*info, selector);
  if (signature.numberOfArguments() != arguments.size() + 2) {
    throw Exception(selector.name() + " was sent with " + std::to_string(arguments.size()) +
                    " arguments");
  }
  // Objects that forward to each other would do so until the stack is used up.
  StackGuard::check();
  Invocation invocation(signature, receiver, selector);
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    invocation.setArgumentAtIndex(arguments[i], i + 2);
  }
  object->forwardInvocation(invocation);
  return invocation.returnValue();
}

Value performSelector(const Value& receiver, const Selector& selector, const Value& object) {
  const MethodSignature signature = methodSignatureForSelector(receiver, selector);
  constexpr std::size_t kHidden = 2;
  const std::size_t count = signature ? signature.numberOfArguments() - kHidden : 0;
  if (count == 0) return send(receiver, selector);
  if (count == 1) return send(receiver, selector, std::span(&object, 1));
  std::vector<Value> arguments(count);
  arguments.front() = object;
  return send(receiver, selector, arguments);
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
