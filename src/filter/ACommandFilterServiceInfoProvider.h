// The service info of the job's device.
#pragma once

#include <utility>

#include "filter/protocols/ICommandFilterServiceInfoProvider.h"
#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"
#include "runtime/device_model/ADMServiceInfo.h"
#include "runtime/device_model/ADMServiceInfoDelegate.h"

namespace commandfilter {

/// Resolves the device URI of the job through the device-model framework, when it is asked and at
/// most once. Without a framework there is no service info.
class ACommandFilterServiceInfoProvider final
    : public Implements<Object, ICommandFilterServiceInfoProvider, ADMServiceInfoDelegate> {
 public:
  static const Class kClass;

  /// nil for a nil URI.
  [[nodiscard]] static RefPtr<ACommandFilterServiceInfoProvider> initWithPrinterURI(
      const RefPtr<String>& printerURI);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  [[nodiscard]] const Ref<String>& printerURI() const noexcept { return printerURI_; }
  /// The resolved service info, which the provider keeps; nil when the device could not be
  /// resolved, and then on every later call too. The first call runs the thread's run loop, in a
  /// mode of its own, until the framework says how the resolution ended.
  [[nodiscard]] Value serviceInfo() override;

  /// Both take the service info out of the run loop, which ends the wait. What counts is the state
  /// that the service info is in then.
  void serviceInfoDidResolve(ADMServiceInfo& serviceInfo) override;
  void serviceInfo_didNotResolve(ADMServiceInfo& serviceInfo, const Value& error) override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ACommandFilterServiceInfoProvider(Ref<String> printerURI)
      : printerURI_(std::move(printerURI)) {}
  ~ACommandFilterServiceInfoProvider() override = default;

  [[nodiscard]] RefPtr<ADMServiceInfo> newServiceInfo() const;
  void resolve(ADMServiceInfo& serviceInfo);

  Ref<String> printerURI_;
  RefPtr<ADMServiceInfo> serviceInfo_;
  /// Set when the one attempt has started.
  bool serviceInfoInitialized_ = false;
};

}  // namespace commandfilter
