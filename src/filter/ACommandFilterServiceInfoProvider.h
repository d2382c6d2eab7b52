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

namespace commandfilter {

/// Knows the device URI of the job. Without a device-model framework that resolves it, there is
/// no service info.
class ACommandFilterServiceInfoProvider final
    : public Implements<Object, ICommandFilterServiceInfoProvider> {
 public:
  static const Class kClass;

  /// nil for a nil URI.
  [[nodiscard]] static RefPtr<ACommandFilterServiceInfoProvider> initWithPrinterURI(
      const RefPtr<String>& printerURI);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }

  [[nodiscard]] const Ref<String>& printerURI() const noexcept { return printerURI_; }
  [[nodiscard]] Value serviceInfo() override { return {}; }

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ACommandFilterServiceInfoProvider(Ref<String> printerURI)
      : printerURI_(std::move(printerURI)) {}
  ~ACommandFilterServiceInfoProvider() override = default;

  Ref<String> printerURI_;
};

}  // namespace commandfilter
