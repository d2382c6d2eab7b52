#include "runtime/Invocation.h"

#include <algorithm>
#include <string>

#include "runtime/Exception.h"
#include "runtime/Send.h"

namespace commandfilter {

namespace {

constexpr std::size_t kHiddenArguments = 2;

std::size_t argumentCountOf(const MethodSignature& signature) {
  if (!signature) throw Exception("an invocation needs the signature of a method");
  return signature.numberOfArguments() - kHiddenArguments;
}

}  // namespace

Invocation::Invocation(MethodSignature signature, Value target, Selector selector)
    : signature_(signature), target_(std::move(target)), selector_(selector) {
  const std::size_t count = argumentCountOf(signature);
  if (count > fewArguments_.size()) manyArguments_.resize(count);
}

Invocation::Invocation(MethodSignature signature, Value target, Selector selector,
                       std::span<const Value> arguments)
    : signature_(signature), target_(std::move(target)), selector_(selector) {
  if (argumentCountOf(signature) != arguments.size()) {
    throw Exception(selector.name() + " was sent with " + std::to_string(arguments.size()) +
                    " arguments");
  }
  if (arguments.size() > fewArguments_.size()) {
    manyArguments_.assign(arguments.begin(), arguments.end());
  } else {
    std::ranges::copy(arguments, fewArguments_.begin());
  }
}

std::span<const Value> Invocation::arguments() const noexcept {
  const std::size_t count = signature_.numberOfArguments() - kHiddenArguments;
  if (count > fewArguments_.size()) return manyArguments_;
  return std::span(fewArguments_).first(count);
}

const Value& Invocation::argumentAtIndex(std::size_t index) const {
  const std::span<const Value> all = arguments();
  if (index < kHiddenArguments || index - kHiddenArguments >= all.size()) {
    throw Exception("invocation of " + selector_.name() + " has no argument " +
                    std::to_string(index));
  }
  return all[index - kHiddenArguments];
}

void Invocation::setArgumentAtIndex(Value value, std::size_t index) {
  static_cast<void>(argumentAtIndex(index));
  const std::size_t place = index - kHiddenArguments;
  (manyArguments_.empty() ? fewArguments_[place] : manyArguments_[place]) = std::move(value);
}

void Invocation::setZeroReturnValue() noexcept {
  const char code = signature_.methodReturnType().front();
  switch (code) {
    case 'c':
      returnValue_ = Number::integer(std::int8_t{0});
      break;
    case 'C':
      returnValue_ = Number::integer(std::uint8_t{0});
      break;
    case 's':
      returnValue_ = Number::integer(std::int16_t{0});
      break;
    case 'S':
      returnValue_ = Number::integer(std::uint16_t{0});
      break;
    case 'i':
      returnValue_ = Number::integer(std::int32_t{0});
      break;
    case 'I':
      returnValue_ = Number::integer(std::uint32_t{0});
      break;
    case 'q':
      returnValue_ = Number::integer(std::int64_t{0});
      break;
    case 'Q':
      returnValue_ = Number::integer(std::uint64_t{0});
      break;
    case 'f':
      returnValue_ = Number::real(0.0F);
      break;
    case 'd':
      returnValue_ = Number::real(0.0);
      break;
    default:
      returnValue_ = Value();
      break;
  }
}

void Invocation::invokeWithTarget(const Value& target) {
  returnValue_ = send(target, selector_, arguments());
}

}  // namespace commandfilter
