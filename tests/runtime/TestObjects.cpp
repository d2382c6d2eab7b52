#include "TestObjects.h"

#include <array>

#include "runtime/Cast.h"
#include "runtime/Invocation.h"
#include "runtime/MethodSignature.h"
#include "runtime/Send.h"

namespace commandfilter::testing {

namespace {

constexpr std::array<const Protocol*, 1> kGreeterAdopts{&INamed::kProtocol};

std::uint64_t lengthOfName(const Greeter& greeter) { return greeter.name().size(); }
Value nameOf(const Greeter& greeter) noexcept { return String::create(greeter.name()); }
Value loudNameOf(const LoudGreeter& greeter) { return String::create(greeter.name() + "!"); }

constexpr auto kGreeterProtocols = conformances<Greeter, INamed, IGreeter>();
constexpr std::array kGreeterMethods{
    method<&Greeter::greet>("greet:"),
    method<&Greeter::echoBoolean>("echoBoolean:"),
    method<&Greeter::echoSignedChar>("echoSignedChar:"),
    method<&Greeter::echoUnsignedChar>("echoUnsignedChar:"),
    method<&Greeter::echoShort>("echoShort:"),
    method<&Greeter::echoUnsignedShort>("echoUnsignedShort:"),
    method<&Greeter::echoInt>("echoInt:"),
    method<&Greeter::echoUnsignedInt>("echoUnsignedInt:"),
    method<&Greeter::echoLong>("echoLong:"),
    method<&Greeter::echoUnsignedLong>("echoUnsignedLong:"),
    method<&Greeter::echoFloat>("echoFloat:"),
    method<&Greeter::echoDouble>("echoDouble:"),
    method<&Greeter::echoText>("echoText:"),
    method<&Greeter::echoValue>("echoValue:"),
    method<&Greeter::echoString>("echoString:"),
    method<&Greeter::echoArray>("echoArray:"),
    method<&Greeter::echoObject>("echoObject:"),
    method<&Greeter::echoNamed>("echoNamed:"),
    method<&Greeter::keep>("keep:"),
    method<&Greeter::textIsNil>("textIsNil:"),
    method<&Greeter::first_second_third>("first:second:third:"),
    method<&lengthOfName>("lengthOfName"),
};
constexpr std::array kNameMethods{method<&nameOf>("name")};
constexpr MethodGroup kNameGroup{"Names", kNameMethods};
constexpr std::array<const MethodGroup*, 1> kGreeterGroups{&kNameGroup};
constexpr std::array kGreeterClassMethods{
    classMethod<&Greeter::countOf_and>("countOf:and:"),
    classMethod<&Greeter::motto>("motto"),
};
constexpr std::array kGreeterInitializers{
    initializer<&Greeter::initWithName>("initWithName:"),
    initializer<&Greeter::initWithGreeter>("initWithGreeter:"),
};

constexpr std::array kLoudMethods{
    method<&LoudGreeter::shout>("shout"),
    method<&loudNameOf>("name"),
};

}  // namespace

constinit const Protocol INamed::kProtocol{"INamed"};
constinit const Protocol IGreeter::kProtocol{"IGreeter", kGreeterAdopts};
constinit const Protocol IStranger::kProtocol{"IStranger"};

constinit const Class Greeter::kClass{.name = "Greeter",
                                      .base = &Object::kClass,
                                      .protocols = kGreeterProtocols,
                                      .methods = kGreeterMethods,
                                      .groups = kGreeterGroups,
                                      .classMethods = kGreeterClassMethods,
                                      .initializers = kGreeterInitializers};
constinit const Class LoudGreeter::kClass{
    .name = "LoudGreeter", .base = &Greeter::kClass, .methods = kLoudMethods};
constinit const Class Proxy::kClass{.name = "Proxy", .base = &Object::kClass};

RefPtr<Greeter> Greeter::initWithName(const String* name) {
  if (name == nullptr || name->isEmpty()) return nullptr;
  return make<Greeter>(name->text());
}

RefPtr<Greeter> Greeter::initWithGreeter(INamed* other) {
  return other != nullptr ? make<Greeter>(other->name()) : RefPtr<Greeter>();
}

Value Greeter::greet(const String* guest) {
  if (guest == nullptr) return {};
  return String::create(name_ + " greets " + guest->text());
}

Ref<Object> Greeter::echoObject(const Object* value) {
  return value != nullptr ? Ref<Object>(const_cast<Object&>(*value)) : Ref<Object>(*this);
}

Value Greeter::first_second_third(const Value& first, std::int32_t second, const String* third) {
  return Array::create({first, Number::integer(second), Value::sharing(third)});
}

bool Proxy::respondsToSelector(const Selector& selector) const {
  return commandfilter::respondsToSelector(target_, selector);
}

bool Proxy::conformsToProtocol(const Protocol& protocol) const {
  return commandfilter::conformsToProtocol(target_, protocol);
}

MethodSignature Proxy::methodSignatureForSelector(const Selector& selector) const {
  return commandfilter::methodSignatureForSelector(target_, selector);
}

void Proxy::forwardInvocation(Invocation& invocation) {
  forwarded_.push_back(invocation.selector().name());
  invocation.invokeWithTarget(target_);
}

Value greeterNamed(std::string name) { return make<Greeter>(std::move(name)); }

}  // namespace commandfilter::testing
