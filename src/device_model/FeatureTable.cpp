#include "device_model/FeatureTable.h"

#include "runtime/Array.h"
#include "runtime/Cast.h"

namespace commandfilter {

namespace {

// nil and no dictionary have no entries.
Value entryOf(const Dictionary* dictionary, std::string_view key) {
  return dictionary != nullptr ? dictionary->objectForKey(key) : Value();
}
Value entryOf(const Dictionary* dictionary, const Value& key) {
  return dictionary != nullptr && !key.isNil() ? dictionary->objectForKey(key) : Value();
}
const Dictionary* partOf(const Dictionary* dictionary, const Value& key) {
  if (dictionary == nullptr || key.isNil()) return nullptr;
  return castTo<Dictionary>(dictionary->objectForKey(key));
}

Value keysOf(const Dictionary* dictionary) {
  ValueVector keys;
  if (dictionary != nullptr) {
    for (const DictionaryEntry& entry : *dictionary) keys.push_back(entry.key);
  }
  return Array::create(std::move(keys));
}

}  // namespace

const Dictionary* FeatureTable::featureNamed(const Value& feature) const {
  return partOf(features_.get(), feature);
}

const Dictionary* FeatureTable::propertiesOf(const Value& feature) const {
  const Dictionary* found = featureNamed(feature);
  return found != nullptr ? castTo<Dictionary>(found->objectForKey("Properties")) : nullptr;
}

const Dictionary* FeatureTable::propertyNamed(const Value& feature, const Value& property) const {
  return partOf(propertiesOf(feature), property);
}

Value FeatureTable::supportedFeatures() const { return keysOf(features_.get()); }

bool FeatureTable::isSupportedFeature(const Value& feature) const {
  return featureNamed(feature) != nullptr;
}

Value FeatureTable::supportedPropertiesForFeature(const Value& feature) const {
  if (featureNamed(feature) == nullptr) return {};
  return keysOf(propertiesOf(feature));
}

bool FeatureTable::isSupportedProperty_forFeature(const Value& property,
                                                  const Value& feature) const {
  return propertyNamed(feature, property) != nullptr;
}

Value FeatureTable::identifiersForFeature(const Value& feature) const {
  return entryOf(featureNamed(feature), "Identifiers");
}

Value FeatureTable::valueForFeature(const Value& feature) const {
  return entryOf(featureNamed(feature), "Value");
}

Value FeatureTable::valueForFeature_property(const Value& feature, const Value& property) const {
  return entryOf(propertyNamed(feature, property), "Value");
}

Value FeatureTable::valueForFeature_property_identifier(const Value& feature, const Value& property,
                                                        const Value& identifier) const {
  const Dictionary* found = propertyNamed(feature, property);
  if (found == nullptr) return {};
  return entryOf(castTo<Dictionary>(found->objectForKey("Identifiers")), identifier);
}

}  // namespace commandfilter
