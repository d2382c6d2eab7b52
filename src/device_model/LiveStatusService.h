// What the status services of a real device have in common.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "device_model/FeatureTable.h"
#include "device_model/LiveServiceInfo.h"
#include "runtime/Object.h"
#include "runtime/Protocol.h"
#include "runtime/Ref.h"
#include "runtime/String.h"
#include "runtime/Value.h"

namespace commandfilter {

/// A service that asks the device when it is first asked itself, and keeps what it was told: a job
/// is short, and a device that answers slowly is asked once. Nothing changes, so there is nothing
/// to observe.
template <typename... Protocols>
class LiveStatusService : public Implements<Object, Protocols...> {
 public:
  [[nodiscard]] Value serviceInfo() override { return device_; }
  void setParameters(const Value& parameters) override { parameters_ = parameters; }
  [[nodiscard]] Value parameters() override { return parameters_; }
  [[nodiscard]] bool isAvailable() override { return device_->isReachable(); }

  [[nodiscard]] Value supportedFeatures() override { return table().supportedFeatures(); }
  [[nodiscard]] bool isSupportedFeature(const Value& feature) override {
    return table().isSupportedFeature(feature);
  }
  [[nodiscard]] Value supportedPropertiesForFeature(const Value& feature) override {
    return table().supportedPropertiesForFeature(feature);
  }
  [[nodiscard]] bool isSupportedProperty_forFeature(const Value& property,
                                                    const Value& feature) override {
    return table().isSupportedProperty_forFeature(property, feature);
  }
  [[nodiscard]] Value identifiersForFeature(const Value& feature) override {
    return table().identifiersForFeature(feature);
  }
  [[nodiscard]] Value valueForFeature(const Value& feature) override {
    return table().valueForFeature(feature);
  }
  [[nodiscard]] Value valueForFeature_property(const Value& feature,
                                               const Value& property) override {
    return table().valueForFeature_property(feature, property);
  }
  [[nodiscard]] Value valueForFeature_property_identifier(const Value& feature,
                                                          const Value& property,
                                                          const Value& identifier) override {
    return table().valueForFeature_property_identifier(feature, property, identifier);
  }

 protected:
  explicit LiveStatusService(Ref<LiveServiceInfo> device) : device_(std::move(device)) {}
  ~LiveStatusService() override = default;

  [[nodiscard]] LiveServiceInfo& device() const noexcept { return *device_; }
  /// The features in the form that `FeatureTable` reads; asked for once.
  [[nodiscard]] virtual Ref<Dictionary> features() = 0;

  /// nil for an empty text, which stands for one that is not known.
  [[nodiscard]] static Value textOrNil(std::string_view text) {
    return text.empty() ? Value() : Value(String::create(std::string(text)));
  }

 private:
  const FeatureTable& table() {
    if (!table_) table_.emplace(features());
    return *table_;
  }

  Ref<LiveServiceInfo> device_;
  Value parameters_;
  std::optional<FeatureTable> table_;
};

}  // namespace commandfilter
