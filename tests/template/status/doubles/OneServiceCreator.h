// A creator of services that a test fills.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "runtime/Class.h"
#include "runtime/MutableDictionary.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "template/status/ADMStatusServiceCreator.h"

namespace commandfilter::testing {

/// Has one service and one cache for all names.
class OneServiceCreator final : public Implements<Object, ADMStatusServiceCreator> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<OneServiceCreator> create(Value service) {
    return make<OneServiceCreator>(std::move(service));
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value statusServiceForName(const String* name) override {
    askedNames.emplace_back(textOf(name));
    return service;
  }
  RefPtr<MutableDictionary> userInfoForServiceName(const String* name) override {
    cacheNames.emplace_back(textOf(name));
    return cache;
  }
  bool servicesAvailable() override { return !service.isNil(); }
  [[nodiscard]] std::uint64_t generation() const noexcept override { return currentGeneration; }
  void reinitializeServices() override { cache = MutableDictionary::create(); }

  Value service;
  std::uint64_t currentGeneration = 0;
  RefPtr<MutableDictionary> cache = MutableDictionary::create();
  /// The names that services and caches were asked for.
  std::vector<std::string> askedNames;
  std::vector<std::string> cacheNames;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);
  explicit OneServiceCreator(Value only) : service(std::move(only)) {}
  ~OneServiceCreator() override = default;
};

inline constexpr auto kOneServiceProtocols =
    conformances<OneServiceCreator, ADMStatusServiceCreator>();
inline constinit const Class OneServiceCreator::kClass{
    .name = "OneServiceCreator", .base = &Object::kClass, .protocols = kOneServiceProtocols};

}  // namespace commandfilter::testing
