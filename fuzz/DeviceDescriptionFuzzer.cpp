// Any property list is a device description or explained; the services of one that is answer every
// message that they say they answer.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "device_model/DeviceDescription.h"
#include "device_model/ModelInfo.h"
#include "device_model/SimulatedStatusService.h"
#include "runtime/Cast.h"
#include "runtime/Exception.h"
#include "runtime/PropertyList.h"
#include "runtime/Send.h"
#include "runtime/String.h"
#include "runtime/ValueVector.h"

namespace {

using namespace commandfilter;

void sendEverything(const Value& service, const Dictionary& description) {
  std::vector<std::string_view> selectors{
      "supportedFeatures",
      "isSupportedFeature:",
      "supportedPropertiesForFeature:",
      "isSupportedProperty:forFeature:",
      "identifiersForFeature:",
      "valueForFeature:",
      "valueForFeature:property:",
      "valueForFeature:property:identifier:",
      "deviceState",
  };
  if (const auto* messages = castTo<Dictionary>(description.objectForKey("Messages"))) {
    for (const DictionaryEntry& entry : *messages) {
      selectors.push_back(textOf(castTo<String>(entry.key)));
    }
  }
  const Value argument = String::create("K");
  for (const std::string_view name : selectors) {
    const Selector selector(name);
    if (!respondsToSelector(service, selector)) continue;
    const ValueVector arguments(
        methodSignatureForSelector(service, selector).numberOfArguments() - 2, argument);
    static_cast<void>(send(service, selector, arguments));
  }
}

void useDescription(const Dictionary& description) {
  const auto* tables = castTo<Dictionary>(description.objectForKey("ModelInfo"));
  const std::array<std::string_view, 1> names{"M"};
  static_cast<void>(
      ModelInfo::create(names, tables)
          ->valueForInfoPath_inTable(String::create("p").get(), String::create("T").get()));
  const auto* services = castTo<Dictionary>(description.objectForKey("StatusServices"));
  if (services == nullptr) return;
  for (const DictionaryEntry& entry : *services) {
    const auto* service = castTo<Dictionary>(entry.value);
    if (service == nullptr) std::abort();
    sendEverything(SimulatedStatusService::create(*service, nullptr), *service);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    Result<Value> list = parsePropertyList({reinterpret_cast<const char*>(data), size});
    if (!list) return 0;
    Result<Ref<Dictionary>> description = checkedDeviceDescription(*list);
    if (description) {
      useDescription(**description);
    } else if (description.reason().empty()) {
      std::abort();
    }
  } catch (const Exception&) {
    // A key's name is the text of a message; one that is nested too deeply cannot be written.
  }
  return 0;
}
