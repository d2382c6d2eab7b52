#include "runtime/Object.h"

#include <array>
#include <cstdio>
#include <string>

#include "runtime/Class.h"
#include "runtime/Comparison.h"
#include "runtime/Description.h"
#include "runtime/Exception.h"
#include "runtime/Invocation.h"
#include "runtime/LiveObjects.h"
#include "runtime/MethodSignature.h"
#include "runtime/Value.h"

namespace commandfilter {

namespace {

Value descriptionOfReceiver(const Value& receiver) { return describe(receiver); }
bool receiverIsEqual(const Value& receiver, const Value& other) { return equal(receiver, other); }

constexpr std::array kObjectMethods{
    method<&descriptionOfReceiver>("description"),
    method<&receiverIsEqual>("isEqual:"),
};

// Objects of a long chain are destroyed one after the other instead of inside each other: the
// stack would not hold a million nested arrays.
constexpr int kNestedDestructions = 64;
struct Destruction {
  int depth = 0;
  const Object* waiting = nullptr;
};
// The destruction that is under way. The storage model saves a call at every access.
[[gnu::tls_model("initial-exec")]] constinit thread_local Destruction destruction;

}  // namespace

constinit const Class Object::kClass{.name = "Object", .methods = kObjectMethods};

void Object::destroy() const noexcept {
  const auto destroyNow = [](const Object* object) {
    LiveObjects::died(*object);
    delete object;  // NOLINT(cppcoreguidelines-owning-memory): the last reference is gone
  };
  if (holding_ == Holding::NoChain) {
    destroyNow(this);
    return;
  }
  if (destruction.depth >= kNestedDestructions) {
    state_.nextToDestroy = destruction.waiting;
    destruction.waiting = this;
    return;
  }
  ++destruction.depth;
  destroyNow(this);
  if (destruction.depth == 1) {
    // Still counted as one destruction, so that what waits is destroyed here and nowhere deeper.
    while (const Object* next = destruction.waiting) {
      destruction.waiting = next->state_.nextToDestroy;
      next->state_.alive.count = 0;
      destroyNow(next);
    }
  }
  --destruction.depth;
}

bool Object::isEqual(const Value& other) const { return other.object() == this; }

std::size_t Object::hash() const { return std::hash<const void*>{}(this); }

Value Object::dictionaryKey() const { return Value::sharing(this); }

void Object::appendDescription(std::string& text, int /*level*/) const {
  std::array<char, 32> address{};
  std::snprintf(address.data(), address.size(), ": %p>", static_cast<const void*>(this));
  text.append("<").append(classInfo().name).append(address.data());
}

bool Object::respondsToSelector(const Selector& selector) const {
  return classInfo().instanceMethod(selector) != nullptr;
}

bool Object::conformsToProtocol(const Protocol& protocol) const {
  return classInfo().conformsToProtocol(protocol);
}

MethodSignature Object::methodSignatureForSelector(const Selector& selector) const {
  const Method* method = classInfo().instanceMethod(selector);
  return method != nullptr ? MethodSignature(method->types) : MethodSignature();
}

void Object::forwardInvocation(Invocation& invocation) {
  throw Exception(std::string(classInfo().name) + ": unrecognized selector " +
                  invocation.selector().name());
}

}  // namespace commandfilter
