// A creator of status services that a test fills.
#pragma once

#include <map>
#include <string>
#include <utility>

#include "runtime/Class.h"
#include "runtime/MutableDictionary.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "template/status/ADMStatusServiceCreator.h"

namespace commandfilter::testing {

/// Has the services that a test puts in, and keeps caches as a creator does.
class ServiceCreatorDouble final : public Implements<Object, ADMStatusServiceCreator> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ServiceCreatorDouble> create() { return make<ServiceCreatorDouble>(); }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  Value statusServiceForName(const String* name) override;
  RefPtr<MutableDictionary> userInfoForServiceName(const String* name) override;
  bool servicesAvailable() override { return available; }
  void reinitializeServices() override;

  std::map<std::string, Value, std::less<>> services;
  bool available = true;
  int reinitialized = 0;
  /// How often a service was asked for.
  int asked = 0;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  ServiceCreatorDouble() = default;
  ~ServiceCreatorDouble() override = default;

  std::map<std::string, Ref<MutableDictionary>> userInfos_;
};

}  // namespace commandfilter::testing
