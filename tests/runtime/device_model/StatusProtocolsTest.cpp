// The messages of the status protocols, and what they answer unless a service knows better.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "TestValues.h"
#include "runtime/Comparison.h"
#include "runtime/Send.h"
#include "runtime/ValueVector.h"
#include "runtime/device_model/ADMDeviceStatus.h"
#include "runtime/device_model/ADMSuppliesManagement.h"
#include "runtime/device_model/ADMSuppliesStatus.h"

namespace commandfilter {
namespace {

using ::testing::ElementsAreArray;
using testing::reasonOf;
using testing::stringOf;

// Each selector with the codes of its result and arguments.
std::vector<std::string> rowsOf(const MethodGroup& group) {
  std::vector<std::string> rows;
  for (const Method& row : group.methods) {
    rows.push_back(std::string(row.selector) + " " + std::string(row.types));
  }
  return rows;
}

TEST(StatusProtocols, HaveTheirMessagesInOrder) {
  EXPECT_THAT(rowsOf(ADMInterface::kMethods),
              ElementsAreArray({"serviceInfo @", "setParameters: v@", "parameters @",
                                "isAvailable c", "lastError @"}));
  EXPECT_THAT(
      rowsOf(ADMStatus::kMethods),
      ElementsAreArray(
          {"delegate @", "setDelegate: v@", "supportedFeatures @", "isSupportedFeature: c@",
           "supportedPropertiesForFeature: @@", "isSupportedProperty:forFeature: c@@",
           "identifiersForFeature: @@", "valueForFeature: @@", "valueForFeature:property: @@@",
           "valueForFeature:property:identifier: @@@@", "addObserver:selector:feature: v@@@",
           "addObserver:selector:feature:property: v@@@@",
           "addObserver:selector:feature:property:identifier: v@@@@@",
           "removeObserver:feature:property:identifier: v@@@@",
           "removeObserver:feature:property: v@@@", "removeObserver:feature: v@@",
           "removeObserver: v@", "scheduleInRunLoop:forMode: v@@",
           "removeFromRunLoop:forMode: v@@"}));
  EXPECT_THAT(rowsOf(ADMDeviceStatus::kMethods), ElementsAreArray({"deviceState @",
                                                                   "batteryLevel @",
                                                                   "batteryCondition @",
                                                                   "batteryLevelTrigger @",
                                                                   "deviceSerialNumber @",
                                                                   "firmwareVersion @",
                                                                   "deviceSubstate @",
                                                                   "isDuplexerInstalled @",
                                                                   "supportedResolutions @",
                                                                   "reserveModeState @",
                                                                   "humanReadableModelName @",
                                                                   "productNumber @",
                                                                   "regionCode @",
                                                                   "printheadAlignmentState @",
                                                                   "bbcMediaState @",
                                                                   "photoTrayState @",
                                                                   "diaperState @",
                                                                   "loidSensorState @",
                                                                   "cameraState @",
                                                                   "photoCardState @",
                                                                   "photoProofSheetState @",
                                                                   "scannerState @",
                                                                   "faxState @",
                                                                   "deviceUIState @"}));
  EXPECT_THAT(rowsOf(ADMSuppliesManagement::kMethods),
              ElementsAreArray(
                  {"suppliesStateAcknowledgment @", "scheduleRetrieveSuppliesWarrantyValue v"}));
  EXPECT_THAT(rowsOf(ADMSuppliesStatus::kMethods),
              ElementsAreArray({"warrantyValue @",
                                "suppliesIdentifiers @",
                                "supplyNameForIdentifier: @@",
                                "supplyDescriptionForIdentifier: @@",
                                "supplyPartNumberForIdentifier: @@",
                                "supplySelectabilityForIdentifier: @@",
                                "supplyStateForIdentifier: @@",
                                "supplyAuthenticationForIdentifier: @@",
                                "supplyLevelForIdentifier: @@",
                                "supplyCapacityForIdentifier: @@",
                                "supplyRemainingPagesForIdentifier: @@",
                                "supplyExpirationDateForIdentifier: @@",
                                "supplyClassForIdentifier: @@",
                                "supplyMeasurementUnitForIdentifier: @@",
                                "supplyTypeForIdentifier: @@",
                                "supplyColorNameForIdentifier: @@",
                                "supplyRGBRepresentationForIdentifier: @@",
                                "supplyDropVolumeForIdentifier: @@",
                                "supplySubstateForIdentifier: @@",
                                "supplyExpectedColorNameForIdentifier: @@",
                                "supplyAdditionalInkLevelInfoForIdentifier: @@",
                                "isIntroSupplyForIdentifier: @@",
                                "supplyLevelMessagingStyleForIdentifier: @@"}));
}

TEST(StatusProtocols, RefineEachOther) {
  EXPECT_TRUE(includesProtocol(ADMStatus::kProtocol, ADMInterface::kProtocol));
  EXPECT_TRUE(includesProtocol(ADMDeviceStatus::kProtocol, ADMInterface::kProtocol));
  EXPECT_TRUE(includesProtocol(ADMSuppliesStatus::kProtocol, ADMStatus::kProtocol));
  EXPECT_TRUE(includesProtocol(ADMSuppliesStatus::kProtocol, ADMSuppliesManagement::kProtocol));
  EXPECT_FALSE(includesProtocol(ADMDeviceStatus::kProtocol, ADMSuppliesManagement::kProtocol));
}

// Knows its state and nothing else.
class Service final : public Implements<Object, ADMDeviceStatus, ADMSuppliesManagement> {
 public:
  static const Class kClass;
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
  Value deviceState() override { return String::create("idle"); }
  void scheduleInRunLoop_forMode(RunLoop* runLoop, const String* mode) override {
    scheduled = runLoop != nullptr ? std::string(textOf(mode)) : "nowhere";
  }
  void removeFromRunLoop_forMode(RunLoop* /*runLoop*/, const String* /*mode*/) override {}

  std::string scheduled;
};
constexpr auto kServiceProtocols =
    conformances<Service, ADMDeviceStatus, ADMStatus, ADMInterface, ADMSuppliesManagement>();
constexpr std::array<const MethodGroup*, 4> kServiceGroups{
    &ADMDeviceStatus::kMethods, &ADMStatus::kMethods, &ADMInterface::kMethods,
    &ADMSuppliesManagement::kMethods};
constinit const Class Service::kClass{.name = "Service",
                                      .base = &Object::kClass,
                                      .protocols = kServiceProtocols,
                                      .groups = kServiceGroups};

TEST(StatusProtocols, LetAClassAnswerAllTheirMessages) {
  const Ref<Service> service = make<Service>();
  EXPECT_TRUE(equal(send(service, Selector("deviceState")), stringOf("idle")));
  for (const MethodGroup* group : kServiceGroups) {
    for (const Method& row : group->methods) {
      const Selector selector{row.selector};
      EXPECT_TRUE(service->respondsToSelector(selector)) << row.selector;
      if (row.selector == "deviceState") continue;
      const ValueVector arguments(row.types.size() - 1);
      const Value answer = send(service, selector, arguments);
      EXPECT_TRUE(row.types[0] == 'c' ? equal(answer, Value::boolean(false)) : answer.isNil())
          << row.selector;
    }
  }
}

TEST(StatusProtocols, HandArgumentsOver) {
  const Ref<Service> service = make<Service>();
  send(service, Selector("scheduleInRunLoop:forMode:"),
       {RunLoop::currentRunLoop(), stringOf("MODE")});
  EXPECT_EQ(service->scheduled, "MODE");
  send(service, Selector("scheduleInRunLoop:forMode:"), {stringOf("x"), stringOf("MODE")});
  EXPECT_EQ(service->scheduled, "nowhere");
}

// Lists the messages without the protocol.
class Pretender final : public Object {
 public:
  static const Class kClass;
  [[nodiscard]] const Class& classInfo() const noexcept override { return kClass; }
};
constinit const Class Pretender::kClass{
    .name = "Pretender", .base = &Object::kClass, .groups = kServiceGroups};

TEST(StatusProtocols, HaveToBeDeclared) {
  EXPECT_EQ(reasonOf([] { send(make<Pretender>(), Selector("deviceState")); }),
            "Pretender does not conform to ADMDeviceStatus");
}

}  // namespace
}  // namespace commandfilter
