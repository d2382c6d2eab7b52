// A device-model framework whose device a test describes.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "filter/protocols/ICommandFilterServiceInfoProvider.h"
#include "runtime/Class.h"
#include "runtime/ClassRegistry.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "runtime/device_model/ADMModelInfo.h"
#include "runtime/device_model/ADMServiceInfo.h"

namespace commandfilter::testing {

/// The framework: its device has the service "Test", which answers "state" with "ready" and raises
/// for "jam". There while the double lives.
class FrameworkDouble {
 public:
  FrameworkDouble();
  FrameworkDouble(const FrameworkDouble&) = delete;
  FrameworkDouble& operator=(const FrameworkDouble&) = delete;
  ~FrameworkDouble();

  bool registers = true;
  /// What happened, in order.
  std::vector<std::string> calls;
  /// How often a service was made.
  int servicesMade = 0;
  /// What the model information holds under the info path.
  std::map<std::string, Value> modelInfo;

 private:
  ClassRegistry::Registration registration_;
};

/// A device in a state.
class ServiceInfoDouble final : public Implements<Object, ADMServiceInfo> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ServiceInfoDouble> create(std::int32_t state = kServiceStateResolved) {
    return make<ServiceInfoDouble>(state);
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  void setDelegate(ADMServiceInfoDelegate* /*delegate*/) override {}
  void scheduleInRunLoop_forMode(RunLoop& /*runLoop*/, const String& /*mode*/) override {}
  void removeFromRunLoop_forMode(RunLoop& /*runLoop*/, const String& /*mode*/) override {}
  void resolveWithTimeout(double /*seconds*/) override {}
  std::int32_t serviceState() override { return state_; }
  RefPtr<String> uri() override { return String::create("test:/device"); }
  RefPtr<String> connectionType() override { return nullptr; }
  RefPtr<String> vendorName() override { return nullptr; }
  RefPtr<String> modelName() override { return nullptr; }
  RefPtr<Dictionary> connectionParams() override { return nullptr; }
  RefPtr<ADMModelInfo> modelInfo() override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  explicit ServiceInfoDouble(std::int32_t state) : state_(state) {}
  ~ServiceInfoDouble() override = default;

  std::int32_t state_;
};

/// Gives a service info, and counts how often.
class ProviderDouble final : public Implements<Object, ICommandFilterServiceInfoProvider> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<ProviderDouble> create(Value info) {
    return make<ProviderDouble>(std::move(info));
  }

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value serviceInfo() override {
    ++asked;
    return info;
  }

  Value info;
  int asked = 0;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  explicit ProviderDouble(Value given) : info(std::move(given)) {}
  ~ProviderDouble() override = default;
};

}  // namespace commandfilter::testing
