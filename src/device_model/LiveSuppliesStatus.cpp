#include "device_model/LiveSuppliesStatus.h"

#include <array>
#include <string_view>

#include "runtime/Array.h"
#include "runtime/Cast.h"

namespace commandfilter {

namespace {

constexpr auto kProtocols = conformances<LiveSuppliesStatus, ADMSuppliesStatus, ADMStatus,
                                         ADMInterface, ADMSuppliesManagement>();
constexpr std::array<const MethodGroup*, 4> kGroups{&ADMSuppliesStatus::kMethods,
                                                    &ADMStatus::kMethods, &ADMInterface::kMethods,
                                                    &ADMSuppliesManagement::kMethods};

Value integerOrNil(const std::optional<std::int64_t>& number) {
  return number ? Value(Number::integer(*number)) : Value();
}

// What the queue has as the names of its supplies, whoever told the scheduler.
Ref<Dictionary> markersFeature(const std::vector<std::string>& names) {
  ValueVector values;
  values.reserve(names.size());
  for (const std::string& name : names) values.push_back(String::create(name));
  DictionaryBuilder property;
  property.set("Value", Array::create(std::move(values)));
  DictionaryBuilder properties;
  properties.set("names", property.build());
  DictionaryBuilder feature;
  feature.set("Properties", properties.build());
  return feature.build();
}

// A property of the feature "supplies" and the message that answers it.
struct Property {
  std::string_view name;
  Value (LiveSuppliesStatus::*answer)(const Value& identifier);
};
constexpr std::array kProperties{
    Property{"name", &LiveSuppliesStatus::supplyNameForIdentifier},
    Property{"level", &LiveSuppliesStatus::supplyLevelForIdentifier},
    Property{"levelInfo", &LiveSuppliesStatus::supplyAdditionalInkLevelInfoForIdentifier},
    Property{"state", &LiveSuppliesStatus::supplyStateForIdentifier},
    Property{"type", &LiveSuppliesStatus::supplyTypeForIdentifier},
    Property{"class", &LiveSuppliesStatus::supplyClassForIdentifier},
    Property{"capacity", &LiveSuppliesStatus::supplyCapacityForIdentifier},
    Property{"unit", &LiveSuppliesStatus::supplyMeasurementUnitForIdentifier},
    Property{"remainingPages", &LiveSuppliesStatus::supplyRemainingPagesForIdentifier},
    Property{"colorName", &LiveSuppliesStatus::supplyColorNameForIdentifier},
    Property{"rgb", &LiveSuppliesStatus::supplyRGBRepresentationForIdentifier},
    Property{"source", &LiveSuppliesStatus::supplySourceForIdentifier},
};

}  // namespace

constinit const Class LiveSuppliesStatus::kClass{.name = "VemoSuppliesStatus",
                                                 .base = &Object::kClass,
                                                 .protocols = kProtocols,
                                                 .groups = kGroups};

Ref<LiveSuppliesStatus> LiveSuppliesStatus::create(LiveServiceInfo& device) {
  return make<LiveSuppliesStatus>(Ref<LiveServiceInfo>(device));
}

const std::vector<Supply>& LiveSuppliesStatus::supplies() {
  if (!supplies_) {
    BackendTransport& backend = device().backend();
    const std::vector<SNMPEntry> entries = backend.snmpTable(suppliesTable());
    supplies_ = entries.empty() ? std::vector<Supply>()
                                : suppliesOfTables(entries, backend.snmpTable(colorantTable()));
    if (supplies_->empty()) {
      supplies_ = suppliesOfAttributes(device().queueAttributes());
      fromQueue_ = true;
    }
    for (const Supply& each : *supplies_) byIdentifier_.emplace(each.identifier, &each);
  }
  return *supplies_;
}

const Supply* LiveSuppliesStatus::supply(const Value& identifier) {
  const auto* text = castTo<String>(identifier);
  if (text == nullptr) return nullptr;
  static_cast<void>(supplies());
  const auto found = byIdentifier_.find(text->view());
  return found != byIdentifier_.end() ? found->second : nullptr;
}

Value LiveSuppliesStatus::text(const Value& identifier, std::string Supply::*member) {
  const Supply* found = supply(identifier);
  return found != nullptr ? textOrNil(found->*member) : Value();
}

Value LiveSuppliesStatus::lastError() {
  if (!supplies().empty()) return {};
  return String::create("neither the device nor its queue tells about supplies");
}

Value LiveSuppliesStatus::suppliesIdentifiers() {
  ValueVector identifiers;
  for (const Supply& each : supplies()) identifiers.push_back(String::create(each.identifier));
  return Array::create(std::move(identifiers));
}

Value LiveSuppliesStatus::supplyNameForIdentifier(const Value& identifier) {
  return text(identifier, &Supply::name);
}

Value LiveSuppliesStatus::supplyDescriptionForIdentifier(const Value& identifier) {
  // Printers have one text for both.
  return text(identifier, &Supply::name);
}

Value LiveSuppliesStatus::supplyStateForIdentifier(const Value& identifier) {
  const Supply* found = supply(identifier);
  return found != nullptr ? textOrNil(found->state()) : Value();
}

Value LiveSuppliesStatus::supplyLevelForIdentifier(const Value& identifier) {
  const Supply* found = supply(identifier);
  return found != nullptr && found->percent ? Value(Number::integer(*found->percent)) : Value();
}

Value LiveSuppliesStatus::supplyCapacityForIdentifier(const Value& identifier) {
  const Supply* found = supply(identifier);
  return found != nullptr ? integerOrNil(found->capacity) : Value();
}

Value LiveSuppliesStatus::supplyRemainingPagesForIdentifier(const Value& identifier) {
  const Supply* found = supply(identifier);
  const bool counted =
      found != nullptr && (found->unit == "impressions" || found->unit == "sheets");
  return counted ? integerOrNil(found->remaining) : Value();
}

Value LiveSuppliesStatus::supplyClassForIdentifier(const Value& identifier) {
  return text(identifier, &Supply::supplyClass);
}

Value LiveSuppliesStatus::supplyMeasurementUnitForIdentifier(const Value& identifier) {
  return text(identifier, &Supply::unit);
}

Value LiveSuppliesStatus::supplyTypeForIdentifier(const Value& identifier) {
  return text(identifier, &Supply::type);
}

Value LiveSuppliesStatus::supplyColorNameForIdentifier(const Value& identifier) {
  return text(identifier, &Supply::colorName);
}

Value LiveSuppliesStatus::supplyRGBRepresentationForIdentifier(const Value& identifier) {
  return text(identifier, &Supply::rgb);
}

Value LiveSuppliesStatus::supplyAdditionalInkLevelInfoForIdentifier(const Value& identifier) {
  return text(identifier, &Supply::levelInfo);
}

Value LiveSuppliesStatus::supplySourceForIdentifier(const Value& identifier) {
  return supply(identifier) != nullptr ? textOrNil(fromQueue_ ? "queue" : "device") : Value();
}

Ref<Dictionary> LiveSuppliesStatus::features() {
  const Value identifiers = suppliesIdentifiers();
  DictionaryBuilder properties;
  for (const Property& property : kProperties) {
    ValueVector values;
    DictionaryBuilder byIdentifier;
    for (const Value& identifier : *castTo<Array>(identifiers)) {
      Value value = (this->*property.answer)(identifier);
      values.push_back(value);
      if (!value.isNil()) byIdentifier.set(identifier, std::move(value));
    }
    DictionaryBuilder entry;
    entry.set("Value", Array::create(std::move(values)));
    entry.set("Identifiers", byIdentifier.build());
    properties.set(property.name, entry.build());
  }
  DictionaryBuilder feature;
  feature.set("Value", identifiers);
  feature.set("Identifiers", identifiers);
  feature.set("Properties", properties.build());
  DictionaryBuilder table;
  table.set("supplies", feature.build());
  const QueueAttributes& attributes = device().queueAttributes();
  const auto known = attributes.find("marker-names");
  table.set("markers",
            markersFeature(known != attributes.end() ? known->second : std::vector<std::string>()));
  return table.build();
}

}  // namespace commandfilter
