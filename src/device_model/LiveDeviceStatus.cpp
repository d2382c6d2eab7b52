#include "device_model/LiveDeviceStatus.h"

#include <array>
#include <map>
#include <string_view>
#include <vector>

#include "device_model/DeviceTables.h"
#include "device_model/PrinterState.h"
#include "device_model/SNMPAnswer.h"
#include "runtime/Array.h"

namespace commandfilter {

namespace {

constexpr auto kProtocols =
    conformances<LiveDeviceStatus, ADMDeviceStatus, ADMStatus, ADMInterface>();
constexpr std::array<const MethodGroup*, 3> kGroups{&ADMDeviceStatus::kMethods,
                                                    &ADMStatus::kMethods, &ADMInterface::kMethods};

// Host Resources MIB (RFC 2790) and Printer MIB (RFC 3805), for the agent's first device.
ObjectID deviceStatusObject() { return {1, 3, 6, 1, 2, 1, 25, 3, 2, 1, 5, 1}; }
ObjectID printerStatusObject() { return {1, 3, 6, 1, 2, 1, 25, 3, 5, 1, 1, 1}; }
ObjectID detectedErrorsObject() { return {1, 3, 6, 1, 2, 1, 25, 3, 5, 1, 2, 1}; }
ObjectID serialNumberObject() { return {1, 3, 6, 1, 2, 1, 43, 5, 1, 1, 17, 1}; }
ObjectID lifeCountObject() { return {1, 3, 6, 1, 2, 1, 43, 10, 2, 1, 4, 1, 1}; }
ObjectID displayTextTable() { return {1, 3, 6, 1, 2, 1, 43, 16, 5, 1, 2}; }

std::optional<std::int64_t> integerOf(const std::optional<std::string>& value) {
  return value ? integerOfSNMPValue(*value) : std::nullopt;
}

template <typename Texts>
Value arrayOf(const Texts& texts) {
  ValueVector elements;
  elements.reserve(texts.size());
  for (const auto& text : texts) elements.emplace_back(String::create(std::string(text)));
  return Array::create(std::move(elements));
}

// A feature whose value and identifiers are those of the entries.
class FeatureBuilder {
 public:
  // A feature has its properties even when it has no entries.
  explicit FeatureBuilder(std::initializer_list<const char*> properties) {
    for (const char* property : properties) properties_[property];
  }
  void add(const std::string& identifier) { identifiers_.push_back(String::create(identifier)); }
  // A property of the entry that was added last.
  void set(const std::string& property, Value value) {
    if (!value.isNil()) properties_[property].emplace_back(identifiers_.back(), std::move(value));
  }
  [[nodiscard]] Ref<Dictionary> build() const {
    DictionaryBuilder properties;
    for (const auto& [name, values] : properties_) {
      DictionaryBuilder byIdentifier;
      for (const auto& [identifier, value] : values) byIdentifier.set(identifier, value);
      const Ref<Dictionary> entries = byIdentifier.build();
      ValueVector all;
      for (const Value& each : identifiers_) all.push_back(entries->objectForKey(each));
      DictionaryBuilder property;
      property.set("Value", Array::create(std::move(all)));
      property.set("Identifiers", entries);
      properties.set(name, property.build());
    }
    const Ref<Array> identifiers = Array::create(identifiers_);
    DictionaryBuilder feature;
    feature.set("Value", identifiers);
    feature.set("Identifiers", identifiers);
    feature.set("Properties", properties.build());
    return feature.build();
  }

 private:
  ValueVector identifiers_;
  std::map<std::string, std::vector<std::pair<Value, Value>>> properties_;
};

Value textOrNilOf(const std::string& text) {
  return text.empty() ? Value() : Value(String::create(text));
}

Ref<Dictionary> featureOf(const std::vector<InputTray>& trays) {
  FeatureBuilder feature({"name", "type"});
  for (const InputTray& tray : trays) {
    feature.add(tray.identifier);
    feature.set("name", textOrNilOf(tray.name));
    feature.set("type", textOrNilOf(tray.type));
  }
  return feature.build();
}

Ref<Dictionary> featureOf(const std::vector<DeviceAlert>& alerts) {
  FeatureBuilder feature({"severity", "code", "description"});
  for (const DeviceAlert& alert : alerts) {
    feature.add(alert.identifier);
    feature.set("severity", textOrNilOf(alert.severity));
    feature.set("code", alert.code ? Value(Number::integer(*alert.code)) : Value());
    feature.set("description", textOrNilOf(alert.description));
  }
  return feature.build();
}

Ref<Dictionary> featureOf(const std::vector<InstallableOption>& options) {
  FeatureBuilder feature({"text", "current", "choices"});
  for (const InstallableOption& option : options) {
    feature.add(option.keyword);
    feature.set("text", textOrNilOf(option.text));
    feature.set("current", textOrNilOf(option.current));
    feature.set("choices", arrayOf(option.choices));
  }
  return feature.build();
}

Ref<Dictionary> dictionaryWith(std::string_view key, Value value) {
  DictionaryBuilder builder;
  if (!value.isNil()) builder.set(key, std::move(value));
  return builder.build();
}

}  // namespace

constinit const Class LiveDeviceStatus::kClass{.name = "VemoDeviceStatus",
                                               .base = &Object::kClass,
                                               .protocols = kProtocols,
                                               .groups = kGroups};

Ref<LiveDeviceStatus> LiveDeviceStatus::create(LiveServiceInfo& device) {
  return make<LiveDeviceStatus>(Ref<LiveServiceInfo>(device));
}

Value LiveDeviceStatus::deviceState() {
  return once(state_, [this] {
    BackendTransport& backend = device().backend();
    const auto printer = integerOf(backend.snmpValue(printerStatusObject()));
    return textOrNil(printerStateWord(printer, integerOf(backend.snmpValue(deviceStatusObject()))));
  });
}

Value LiveDeviceStatus::deviceSubstate() {
  return once(substate_, [this]() -> Value {
    if (const auto bits = device().backend().snmpValue(detectedErrorsObject())) {
      substateSource_ = "device";
      return arrayOf(detectedErrors(*bits));
    }
    const QueueAttributes& attributes = device().queueAttributes();
    const auto found = attributes.find("printer-state-reasons");
    if (found == attributes.end()) return {};
    substateSource_ = "queue";
    std::vector<std::string> reasons;
    for (const std::string& reason : found->second) {
      // The scheduler's own reasons tell about the queue, not about the device.
      if (reason != "none" && !reason.starts_with("cups-")) reasons.push_back(reason);
    }
    return arrayOf(reasons);
  });
}

Value LiveDeviceStatus::deviceSerialNumber() {
  return once(serialNumber_, [this]() -> Value {
    // The ID may be there already, the agent has to be asked.
    const std::string_view named = device().interpretedID().serialNumber();
    if (!named.empty()) return textOrNil(named);
    if (const auto number = device().backend().snmpValue(serialNumberObject())) {
      Value text = textOrNil(textOfSNMPValue(*number));
      if (!text.isNil()) return text;
    }
    return textOrNil(device().serialNumberInURI());
  });
}

Value LiveDeviceStatus::isDuplexerInstalled() {
  return once(duplexer_, [this]() -> Value {
    const std::optional<bool> installed = hasDuplexer(device().backend());
    return installed ? Value::boolean(*installed) : Value();
  });
}

Value LiveDeviceStatus::firmwareVersion() {
  return textOrNil(device().interpretedID().firmwareVersion());
}

Value LiveDeviceStatus::humanReadableModelName() {
  const std::string_view described = device().interpretedID().description();
  if (!described.empty()) return textOrNil(described);
  const QueueAttributes& attributes = device().queueAttributes();
  const auto found = attributes.find("printer-make-and-model");
  if (found != attributes.end() && !found->second.empty()) return textOrNil(found->second.front());
  return device().modelName();
}

Value LiveDeviceStatus::supportedResolutions() {
  const QueueAttributes& attributes = device().queueAttributes();
  const auto found = attributes.find("printer-resolution-supported");
  return found != attributes.end() ? arrayOf(found->second) : Value();
}

Value LiveDeviceStatus::deviceUIState() {
  return once(display_, [this]() -> Value {
    std::vector<std::string> lines;
    for (const SNMPEntry& line : device().backend().snmpTable(displayTextTable())) {
      lines.push_back(textOfSNMPValue(line.value));
    }
    return lines.empty() ? Value() : arrayOf(lines);
  });
}

Value LiveDeviceStatus::pageCount() const {
  const auto count = integerOf(device().backend().snmpValue(lifeCountObject()));
  return count && *count >= 0 ? Value(Number::integer(*count)) : Value();
}

Ref<Dictionary> LiveDeviceStatus::stateFeature() {
  const auto property = [](Value value) { return dictionaryWith("Value", std::move(value)); };
  DictionaryBuilder properties;
  properties.set("reasons", property(deviceSubstate()));
  properties.set("source", property(textOrNil(substateSource_)));
  return properties.build();
}

Ref<Dictionary> LiveDeviceStatus::features() {
  DictionaryBuilder table;
  const auto addFeature = [&table](std::string_view name, Value value, Ref<Dictionary> properties) {
    DictionaryBuilder feature;
    if (!value.isNil()) feature.set("Value", std::move(value));
    feature.set("Properties", std::move(properties));
    table.set(name, feature.build());
  };
  const auto property = [](Value value) { return dictionaryWith("Value", std::move(value)); };

  addFeature("state", deviceState(), stateFeature());
  DictionaryBuilder model;
  model.set("vendor", property(device().vendorName()));
  model.set("name", property(device().modelName()));
  model.set("serialNumber", property(deviceSerialNumber()));
  model.set("firmwareVersion", property(firmwareVersion()));
  model.set("deviceID", property(device().deviceID()));
  addFeature("model", humanReadableModelName(), model.build());
  addFeature("pageCount", pageCount(), Dictionary::create());
  BackendTransport& backend = device().backend();
  table.set("alerts", featureOf(alertsOf(backend)));
  table.set("inputTrays", featureOf(inputTraysOf(backend)));
  table.set("installableOptions", featureOf(device().installableOptions()));
  return table.build();
}

}  // namespace commandfilter
