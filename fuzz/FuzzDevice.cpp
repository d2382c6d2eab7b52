#include "FuzzDevice.h"

#include <array>
#include <string>

#include "runtime/Array.h"
#include "runtime/Date.h"
#include "runtime/Dictionary.h"
#include "runtime/Exception.h"
#include "runtime/Number.h"
#include "runtime/String.h"

namespace commandfilter::fuzz {

namespace {

constexpr auto kProtocols = conformances<FuzzDevice, ADMFeaturePathSource>();
constexpr std::array kMethods{
    method<&FuzzDevice::deviceState>("deviceState"),
    method<&FuzzDevice::suppliesIdentifiers>("suppliesIdentifiers"),
    method<&FuzzDevice::supplyLevelForIdentifier>("supplyLevelForIdentifier:"),
    method<&FuzzDevice::brokenMessage>("brokenMessage"),
};

Value text(const char* characters) { return String::create(characters); }

Value supplies() {
  DictionaryBuilder codes;
  codes.set(Value(Number::integer(1)), text("Low"));
  codes.set(Value(Number::integer(2)), text("Empty"));
  codes.set(Value(Number::integer(4)), text("Jam"));
  return Array::create({text("Black"), text("Cyan"), Number::integer(3), Number::real(2.5),
                        Value::boolean(true), Value::null(), Date::create(0),
                        Value(codes.build())});
}

}  // namespace

constinit const Class FuzzDevice::kClass{
    .name = "FuzzDevice", .base = &Object::kClass, .protocols = kProtocols, .methods = kMethods};

Ref<FuzzDevice> FuzzDevice::create() { return make<FuzzDevice>(); }

Value FuzzDevice::valueForFeaturePathComponents_errorInfo(const Array& components,
                                                          RefPtr<String>& errorInfo) {
  errorInfo = nullptr;
  if (components.containsObject(text("Supplies"))) return supplies();
  if (components.containsObject(text("Level"))) return Number::integer(42);
  if (components.containsObject(text("Missing"))) return {};
  errorInfo = String::create("no %@ such %d path %s %100000d %%");
  return {};
}

Value FuzzDevice::deviceState() const { return Number::integer(3); }

Value FuzzDevice::suppliesIdentifiers() const { return supplies(); }

Value FuzzDevice::supplyLevelForIdentifier(const Value& identifier) const { return identifier; }

Value FuzzDevice::brokenMessage() const { throw Exception("this message is always broken"); }

Ref<Dictionary> fuzzConfiguration() {
  DictionaryBuilder macros;
  macros.set("Twice", text("@arg0 + @arg0"));
  macros.set("Nested", text("_Twice(_Twice(@arg0))"));
  macros.set("Circle", text("_Circle(@argv)"));
  macros.set("Broken", text("@arg0 + 1.5"));
  DictionaryBuilder configuration;
  configuration.set("TemplateMacroses", Value(macros.build()));
  return configuration.build();
}

}  // namespace commandfilter::fuzz
