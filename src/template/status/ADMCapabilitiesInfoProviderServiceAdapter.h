// What the model can do, as a status service.
#pragma once

#include <utility>

#include "runtime/Class.h"
#include "runtime/Export.h"
#include "runtime/Object.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Shows the messages of the framework's capabilities provider as features. There are no
/// properties, identifiers and observers.
class COMMANDFILTER_EXPORT ADMCapabilitiesInfoProviderServiceAdapter final : public Object {
 public:
  static const Class kClass;

  /// An adapter for the device; one without a provider for nil, and when the framework has none.
  [[nodiscard]] static Ref<ADMCapabilitiesInfoProviderServiceAdapter> initWithServiceInfo(
      const Value& serviceInfo);

  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  /// The framework's object; nil when there is none.
  [[nodiscard]] Value capabilitiesProvider() const { return capabilitiesProvider_; }

  /// YES for "suppliesPlatformCode" and "supportedSupplies", whatever the provider answers.
  [[nodiscard]] bool isSupportedFeature(const Value& feature) const;
  /// The provider's answer to the message without arguments that the feature names; nil when it
  /// does not answer to it.
  [[nodiscard]] Value valueForFeature(const Value& feature) const;

 private:
  template <typename T, typename... Arguments>
  friend Ref<T> make(Arguments&&... arguments);

  explicit ADMCapabilitiesInfoProviderServiceAdapter(Value capabilitiesProvider)
      : capabilitiesProvider_(std::move(capabilitiesProvider)) {}
  ~ADMCapabilitiesInfoProviderServiceAdapter() override = default;

  Value capabilitiesProvider_;
};

}  // namespace commandfilter
