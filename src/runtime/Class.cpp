#include "runtime/Class.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>

#include "runtime/Cast.h"

namespace commandfilter {

namespace {

const Method* findIn(std::span<const Method> methods, std::string_view name) noexcept {
  const auto found =
      std::ranges::find_if(methods, [name](const Method& row) { return row.selector == name; });
  return found != methods.end() ? &*found : nullptr;
}

const Method* searchInstanceMethod(const Class* info, std::string_view name) noexcept {
  for (; info != nullptr; info = info->base) {
    if (const Method* row = findIn(info->methods, name)) return row;
    for (const MethodGroup* group : info->groups) {
      if (const Method* row = findIn(group->methods, name)) return row;
    }
  }
  return nullptr;
}

// The answers of the last searches, misses included. A slot is replaced by the next pair that
// falls on it.
struct CachedMethod {
  const Class* info = nullptr;
  const std::string* name = nullptr;
  const Method* method = nullptr;
};
constexpr std::size_t kCacheSize = 1024;

std::array<CachedMethod, kCacheSize>& methodCache() noexcept {
  static std::array<CachedMethod, kCacheSize> cache;
  return cache;
}

}  // namespace

bool Class::isKindOf(const Class& other) const noexcept {
  for (const Class* info = this; info != nullptr; info = info->base) {
    if (info == &other) return true;
  }
  return false;
}

const Method* Class::instanceMethod(const Selector& selector) const noexcept {
  const std::size_t slot =
      ((reinterpret_cast<std::uintptr_t>(this) >> 4U) ^ (selector.hash() >> 5U)) % kCacheSize;
  CachedMethod& cached = methodCache()[slot];
  if (cached.info != this || cached.name != &selector.name()) {
    cached = {this, &selector.name(), searchInstanceMethod(this, selector.name())};
  }
  return cached.method;
}

const Method* Class::classMethod(const Selector& selector) const noexcept {
  for (const Class* info = this; info != nullptr; info = info->base) {
    if (const Method* row = findIn(info->classMethods, selector.name())) return row;
  }
  return nullptr;
}

const Method* Class::initializer(const Selector& selector) const noexcept {
  return findIn(initializers, selector.name());
}

bool Class::instancesRespondToSelector(const Selector& selector) const noexcept {
  return instanceMethod(selector) != nullptr || initializer(selector) != nullptr;
}

const Method* RememberedMethod::ask(const Class& info, const Selector& selector) noexcept {
  method_ = info.instanceMethod(selector);
  info_ = &info;
  generation_ = detail::methodGeneration;
  return method_;
}

bool Class::conformsToProtocol(const Protocol& protocol) const noexcept {
  for (const Class* info = this; info != nullptr; info = info->base) {
    for (const Conformance& row : info->protocols) {
      if (includesProtocol(*row.protocol, protocol)) return true;
    }
  }
  return false;
}

const Class* classOf(const Value& value) noexcept {
  if (value.isNumber()) return &kNumberClass;
  if (value.isNull()) return &kNullClass;
  const Object* object = value.object();
  return object != nullptr ? &object->classInfo() : nullptr;
}

namespace detail {

constinit std::uint32_t methodGeneration = 0;

void forgetMethods() noexcept {
  methodCache().fill({});
  ++methodGeneration;
}

bool isKindOfClass(const Object& object, const Class& info) noexcept {
  return object.classInfo().isKindOf(info);
}

void* interfaceOf(Object& object, const Protocol& protocol) noexcept {
  for (const Class* info = &object.classInfo(); info != nullptr; info = info->base) {
    for (const Conformance& row : info->protocols) {
      if (row.protocol == &protocol || row.protocol->name == protocol.name) {
        return row.interface(object);
      }
    }
  }
  return nullptr;
}

}  // namespace detail

}  // namespace commandfilter
