// Features with their properties and identifiers.
#pragma once

#include <string_view>
#include <utility>

#include "runtime/Dictionary.h"
#include "runtime/Ref.h"
#include "runtime/Value.h"

namespace commandfilter {

/// Answers the eight feature messages of `ADMStatus` from a dictionary: feature to {"Value",
/// "Identifiers": array, "Properties": {property to {"Value", "Identifiers": {identifier to
/// value}}}}, all of them optional. What is not there is nil; parts of another kind count as
/// missing.
class FeatureTable {
 public:
  explicit FeatureTable(Ref<Dictionary> features) : features_(std::move(features)) {}

  [[nodiscard]] Value supportedFeatures() const;
  [[nodiscard]] bool isSupportedFeature(const Value& feature) const;
  [[nodiscard]] Value supportedPropertiesForFeature(const Value& feature) const;
  [[nodiscard]] bool isSupportedProperty_forFeature(const Value& property,
                                                    const Value& feature) const;
  [[nodiscard]] Value identifiersForFeature(const Value& feature) const;
  [[nodiscard]] Value valueForFeature(const Value& feature) const;
  [[nodiscard]] Value valueForFeature_property(const Value& feature, const Value& property) const;
  [[nodiscard]] Value valueForFeature_property_identifier(const Value& feature,
                                                          const Value& property,
                                                          const Value& identifier) const;

 private:
  [[nodiscard]] const Dictionary* featureNamed(const Value& feature) const;
  [[nodiscard]] const Dictionary* propertiesOf(const Value& feature) const;
  [[nodiscard]] const Dictionary* propertyNamed(const Value& feature, const Value& property) const;

  Ref<Dictionary> features_;
};

}  // namespace commandfilter
