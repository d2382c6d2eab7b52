// Dynamic sends: for the places where the name of a message is data.
#pragma once

#include <initializer_list>
#include <span>

#include "runtime/Export.h"
#include "runtime/MethodSignature.h"
#include "runtime/Protocol.h"
#include "runtime/Selector.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Sends the message; nil as the receiver answers nil. A message without a method is forwarded
/// when the object gives a signature for it. May run plug-in code.
/// @throws Exception when the receiver does not answer to the selector, when there are not as many
/// arguments as the method takes, or when forwarding never comes to an end.
COMMANDFILTER_EXPORT Value send(const Value& receiver, const Selector& selector,
                                std::span<const Value> arguments);
inline Value send(const Value& receiver, const Selector& selector,
                  std::initializer_list<Value> arguments = {}) {
  return send(receiver, selector, std::span<const Value>(arguments.begin(), arguments.size()));
}

/// Sends the message with one object, or with fewer or more arguments as its method takes: an
/// object that is not wanted is left out, and arguments that are missing are nil. May run plug-in
/// code.
/// @throws Exception when the receiver does not answer to the selector.
COMMANDFILTER_EXPORT Value performSelector(const Value& receiver, const Selector& selector,
                                           const Value& object = Value());

/// Calls a class method by name.
/// @throws Exception when the class has none of that name, or takes another number of arguments.
COMMANDFILTER_EXPORT Value sendToClass(const Class& receiver, const Selector& selector,
                                       std::initializer_list<Value> arguments = {});

/// Makes an instance with the class's own initialiser of that name; nil when it has none or the
/// initialiser refuses. May run plug-in code.
/// @throws Exception when the initialiser takes another number of arguments.
[[nodiscard]] COMMANDFILTER_EXPORT Value instantiate(const Class& info, const Selector& initializer,
                                                     std::initializer_list<Value> arguments = {});

/// NO for nil.
[[nodiscard]] COMMANDFILTER_EXPORT bool respondsToSelector(const Value& receiver,
                                                           const Selector& selector);
/// NO for nil.
[[nodiscard]] COMMANDFILTER_EXPORT bool conformsToProtocol(const Value& receiver,
                                                           const Protocol& protocol);
/// Empty for nil and for a selector that the receiver does not answer to.
[[nodiscard]] COMMANDFILTER_EXPORT MethodSignature
methodSignatureForSelector(const Value& receiver, const Selector& selector);

}  // namespace commandfilter
