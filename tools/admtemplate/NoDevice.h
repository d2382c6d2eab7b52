// Evaluating without a device.
#pragma once

#include "runtime/Class.h"
#include "runtime/Object.h"
#include "template/status/ADMStatusServiceCreator.h"

namespace commandfilter::tools {

/// The services of no device: there are none, but what needs none can be computed.
class NoDevice final : public Implements<Object, ADMStatusServiceCreator> {
 public:
  static const Class kClass;

  [[nodiscard]] static Ref<NoDevice> create() { return make<NoDevice>(); }
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  Value statusServiceForName(const String* /*name*/) override { return {}; }
  RefPtr<MutableDictionary> userInfoForServiceName(const String* name) override;
  bool servicesAvailable() override { return true; }
  void reinitializeServices() override { answers_->removeAllObjects(); }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  NoDevice() = default;
  ~NoDevice() override = default;

  /// By service name; every answer is a failure.
  Ref<MutableDictionary> answers_ = MutableDictionary::create();
};

}  // namespace commandfilter::tools
