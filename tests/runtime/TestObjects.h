// Classes for the tests of dynamic calls: one with methods of every kind, and a proxy.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "runtime/Array.h"
#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter::testing {

class INamed : public ProtocolBase {
 public:
  static const Protocol kProtocol;
  [[nodiscard]] virtual std::string name() const = 0;

 protected:
  ~INamed() = default;
};

// Refines INamed.
class IGreeter : public ProtocolBase {
 public:
  static const Protocol kProtocol;
  virtual Value greet(const String* guest) = 0;

 protected:
  ~IGreeter() = default;
};

// Nothing conforms to it.
class IStranger : public ProtocolBase {
 public:
  static const Protocol kProtocol;

 protected:
  ~IStranger() = default;
};

// Its methods keep what they were called with.
class Greeter : public Implements<Object, INamed, IGreeter> {
 public:
  static const Class kClass;

  explicit Greeter(std::string name) : name_(std::move(name)) {}

  // "initWithName:", which refuses an empty name, and "initWithGreeter:".
  static RefPtr<Greeter> initWithName(const String* name);
  static RefPtr<Greeter> initWithGreeter(INamed* other);
  // Class methods.
  static std::int32_t countOf_and(std::int32_t left, std::int32_t right) { return left + right; }
  static Ref<String> motto() { return String::create("hello"); }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] std::string name() const override { return name_; }
  Value greet(const String* guest) override;

  // One method for each type: it gives back what it is given.
  bool echoBoolean(bool value) { return value; }
  std::int8_t echoSignedChar(std::int8_t value) const { return value; }
  std::uint8_t echoUnsignedChar(std::uint8_t value) noexcept { return value; }
  std::int16_t echoShort(std::int16_t value) const noexcept { return value; }
  std::uint16_t echoUnsignedShort(std::uint16_t value) { return value; }
  std::int32_t echoInt(std::int32_t value) { return value; }
  std::uint32_t echoUnsignedInt(std::uint32_t value) { return value; }
  std::int64_t echoLong(std::int64_t value) { return value; }
  std::uint64_t echoUnsignedLong(std::uint64_t value) { return value; }
  float echoFloat(float value) { return value; }
  double echoDouble(double value) { return value; }
  const char* echoText(const char* value) { return value; }
  Value echoValue(const Value& value) { return value; }
  String* echoString(String* value) { return value; }
  RefPtr<Array> echoArray(RefPtr<Array> value) { return value; }
  Ref<Object> echoObject(const Object* value);
  INamed* echoNamed(INamed* value) { return value; }
  void keep(Value value) { kept = std::move(value); }
  std::uint64_t textIsNil(const char* text) { return text == nullptr ? 1 : 0; }
  Value first_second_third(const Value& first, std::int32_t second, const String* third);

  Value kept;

 protected:
  ~Greeter() override = default;

 private:
  std::string name_;
};

// Inherits what a class inherits; its initialiser is its own.
class LoudGreeter final : public Greeter {
 public:
  static const Class kClass;
  using Greeter::Greeter;
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value shout() { return String::create("HELLO"); }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);
  ~LoudGreeter() override = default;
};

// Stands for another value, and notes what passes through it.
class Proxy final : public Object {
 public:
  static const Class kClass;

  explicit Proxy(Value target) : target_(std::move(target)) {}

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  [[nodiscard]] bool respondsToSelector(const Selector& selector) const override;
  [[nodiscard]] bool conformsToProtocol(const Protocol& protocol) const override;
  [[nodiscard]] MethodSignature methodSignatureForSelector(const Selector& selector) const override;
  void forwardInvocation(Invocation& invocation) override;

  void setTarget(Value target) { target_ = std::move(target); }
  [[nodiscard]] const std::vector<std::string>& forwarded() const noexcept { return forwarded_; }

 private:
  Value target_;
  std::vector<std::string> forwarded_;
};

// A greeter under the name, as a value.
Value greeterNamed(std::string name);

}  // namespace commandfilter::testing
