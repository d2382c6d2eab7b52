// The framework's main factory.
#pragma once

#include "runtime/Class.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/device_model/ADMDeviceIDServiceFactory.h"
#include "runtime/device_model/ADMIOProvider.h"
#include "runtime/device_model/ADMServiceInfo.h"
#include "runtime/device_model/ADMStatusFactory.h"

namespace commandfilter {

/// The class named "ADMCoreFactory", which has no instances.
struct CoreFactory {
  static const Class kClass;

  [[nodiscard]] static RefPtr<ADMDeviceIDServiceFactory> newDeviceIDServiceFactory();
  [[nodiscard]] static RefPtr<ADMStatusFactory> newStatusFactory();
  /// The simulated or real device of the URI; nil for a nil URI. A simulated device needs no I/O
  /// provider, which may be nil anyway.
  [[nodiscard]] static RefPtr<ADMServiceInfo> newServiceInfoWithURI_ioProvider(
      const String* uri, ADMIOProvider* ioProvider);
  /// The same without an I/O provider; nil for another class than `kPrinterDeviceClass`.
  [[nodiscard]] static RefPtr<ADMServiceInfo> newServiceInfoWithURI_deviceClass(
      const String* uri, const String* deviceClass);
  /// Forgets what the backend and the queue of real devices have answered, for a tool that puts
  /// another backend in the place of the one before; in a job nobody does.
  static void forgetAnswers();
};

}  // namespace commandfilter
