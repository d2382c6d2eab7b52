#pragma once

#include "comparison/Datum.h"
#include "runtime/Class.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"
#include "template/status/ADMFeaturePathSource.h"

namespace commandfilter::benchmarks {

// A device as the engine sees it: feature paths lead through dictionaries.
class DeviceService final : public Implements<Object, ADMFeaturePathSource> {
 public:
  static const Class kClass;

  static Ref<DeviceService> create(const Datum& device);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value valueForFeaturePathComponents_errorInfo(const Array& components,
                                                RefPtr<String>& errorInfo) override;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> commandfilter::make(Arguments&&... arguments);

  explicit DeviceService(Value features) : features_(std::move(features)) {}
  ~DeviceService() override = default;

  Value features_;
};

}  // namespace commandfilter::benchmarks
