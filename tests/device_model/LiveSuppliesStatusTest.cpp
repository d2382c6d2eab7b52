#include "device_model/LiveSuppliesStatus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "Doubles.h"
#include "TestValues.h"
#include "runtime/Array.h"
#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "runtime/Description.h"
#include "runtime/Send.h"

namespace commandfilter {
namespace {

using testing::arrayOf;
using testing::ask;
using testing::ScriptedDevice;
using testing::stringOf;

class LiveSupplies : public ::testing::Test {
 protected:
  Value status() { return device_.resolved()->statusService(ADMSuppliesStatus::kProtocol); }
  void addSupply(const std::string& index, const std::vector<std::string>& columns) {
    if (!device_.backend.objects) device_.backend.objects.emplace();
    for (std::size_t i = 0; i < columns.size(); ++i) {
      (*device_.backend
            .objects)[".1.3.6.1.2.1.43.11.1.1." + std::to_string(i + 2) + ".1." + index] =
          columns[i];
    }
  }
  void usePrinterMIB() {
    addSupply("1", {"1", "1", "3", "21", "Black Toner", "7", "2000", "500"});
    addSupply("2", {"1", "0", "4", "4", "Waste", "19", "100", "-3"});
    (*device_.backend.objects)[".1.3.6.1.2.1.43.12.1.1.4.1.1"] = "black";
  }

  ScriptedDevice device_;
};

TEST_F(LiveSupplies, AreThoseOfThePrinterMIB) {
  usePrinterMIB();
  const Value service = status();
  EXPECT_TRUE(equal(ask(service, "suppliesIdentifiers"), arrayOf({stringOf("1"), stringOf("2")})));
  const auto answer = [&service](const char* selector, const char* identifier) {
    return descriptionOf(ask(service, selector, {stringOf(identifier)}));
  };
  EXPECT_EQ(answer("supplyNameForIdentifier:", "1"), "Black Toner");
  EXPECT_EQ(answer("supplyDescriptionForIdentifier:", "1"), "Black Toner");
  EXPECT_EQ(answer("supplyStateForIdentifier:", "1"), "ok");
  EXPECT_EQ(answer("supplyLevelForIdentifier:", "1"), "25");
  EXPECT_EQ(answer("supplyCapacityForIdentifier:", "1"), "2000");
  EXPECT_EQ(answer("supplyRemainingPagesForIdentifier:", "1"), "500");
  EXPECT_EQ(answer("supplyClassForIdentifier:", "1"), "supplyThatIsConsumed");
  EXPECT_EQ(answer("supplyMeasurementUnitForIdentifier:", "1"), "impressions");
  EXPECT_EQ(answer("supplyTypeForIdentifier:", "1"), "tonerCartridge");
  EXPECT_EQ(answer("supplyColorNameForIdentifier:", "1"), "black");
  EXPECT_EQ(answer("supplyRGBRepresentationForIdentifier:", "1"), "#000000");
  EXPECT_EQ(answer("supplyAdditionalInkLevelInfoForIdentifier:", "1"), "(null)");
  EXPECT_EQ(answer("supplyLevelForIdentifier:", "2"), "(null)");
  EXPECT_EQ(answer("supplyAdditionalInkLevelInfoForIdentifier:", "2"), "some");
  EXPECT_EQ(answer("supplyRemainingPagesForIdentifier:", "2"), "(null)");
  EXPECT_TRUE(ask(service, "lastError").isNil());
}

TEST_F(LiveSupplies, AreThoseOfTheQueueWithoutAnAgent) {
  device_.queue.ipp = {{"marker-names", {"Cyan"}}, {"marker-levels", {"5"}}};
  const Value service = status();
  EXPECT_TRUE(equal(ask(service, "suppliesIdentifiers"), arrayOf({stringOf("1")})));
  EXPECT_TRUE(
      equal(ask(service, "supplyLevelForIdentifier:", {stringOf("1")}), Number::integer(5)));
}

TEST_F(LiveSupplies, SayWhoToldAboutThem) {
  const auto source = [this](const char* identifier) {
    return descriptionOf(ask(status(), "valueForFeature:property:identifier:",
                             {stringOf("supplies"), stringOf("source"), stringOf(identifier)}));
  };
  device_.queue.ipp = {{"marker-names", {"Cyan"}}};
  EXPECT_EQ(source("1"), "queue");
  EXPECT_EQ(source("2"), "(null)");
}

TEST_F(LiveSupplies, SayThatTheDeviceToldAboutThem) {
  usePrinterMIB();
  device_.queue.ipp = {{"marker-names", {"Old"}}};
  EXPECT_TRUE(
      equal(ask(status(), "valueForFeature:property:", {stringOf("markers"), stringOf("names")}),
            arrayOf({stringOf("Old")})));
  EXPECT_EQ(descriptionOf(ask(status(), "valueForFeature:property:identifier:",
                              {stringOf("supplies"), stringOf("source"), stringOf("1")})),
            "device");
}

TEST_F(LiveSupplies, AreThoseOfTheQueueWhenTheAgentHasNoPrinterMIB) {
  device_.backend.objects = testing::BackendScript::Objects{{".1.3.6.1.2.1.1.1.0", "a router"}};
  device_.queue.ipp = {{"marker-names", {"Cyan"}}};
  EXPECT_TRUE(equal(ask(status(), "suppliesIdentifiers"), arrayOf({stringOf("1")})));
}

TEST_F(LiveSupplies, MayBeVeryMany) {
  constexpr std::size_t kCount = 40'000;
  std::vector<std::string> names;
  for (std::size_t i = 1; i <= kCount; ++i) names.push_back("Ink " + std::to_string(i));
  device_.queue.ipp = {{"marker-names", names}};
  const Value service = status();
  const Value all =
      ask(service, "valueForFeature:property:", {stringOf("supplies"), stringOf("name")});
  ASSERT_EQ(castTo<Array>(all)->count(), kCount);
  EXPECT_TRUE(equal(castTo<Array>(all)->objectAtIndex(kCount - 1), stringOf("Ink 40000")));
  EXPECT_TRUE(
      equal(ask(service, "supplyNameForIdentifier:", {stringOf("40000")}), stringOf("Ink 40000")));
  EXPECT_TRUE(ask(service, "supplyNameForIdentifier:", {stringOf("40001")}).isNil());
}

TEST_F(LiveSupplies, MayBeUnknown) {
  const Value service = status();
  EXPECT_TRUE(equal(ask(service, "suppliesIdentifiers"), arrayOf({})));
  EXPECT_EQ(descriptionOf(ask(service, "lastError")),
            "neither the device nor its queue tells about supplies");
}

TEST_F(LiveSupplies, AnswerNilForOtherIdentifiers) {
  usePrinterMIB();
  const Value service = status();
  for (const char* selector : {"supplyNameForIdentifier:",
                               "supplyDescriptionForIdentifier:",
                               "supplyPartNumberForIdentifier:",
                               "supplySelectabilityForIdentifier:",
                               "supplyStateForIdentifier:",
                               "supplyAuthenticationForIdentifier:",
                               "supplyLevelForIdentifier:",
                               "supplyCapacityForIdentifier:",
                               "supplyRemainingPagesForIdentifier:",
                               "supplyExpirationDateForIdentifier:",
                               "supplyClassForIdentifier:",
                               "supplyMeasurementUnitForIdentifier:",
                               "supplyTypeForIdentifier:",
                               "supplyColorNameForIdentifier:",
                               "supplyRGBRepresentationForIdentifier:",
                               "supplyDropVolumeForIdentifier:",
                               "supplySubstateForIdentifier:",
                               "supplyExpectedColorNameForIdentifier:",
                               "supplyAdditionalInkLevelInfoForIdentifier:",
                               "isIntroSupplyForIdentifier:",
                               "supplyLevelMessagingStyleForIdentifier:"}) {
    for (const Value& identifier : {stringOf("3"), Value(), Value(Number::integer(1))}) {
      EXPECT_TRUE(ask(service, selector, {identifier}).isNil()) << selector;
    }
  }
}

TEST_F(LiveSupplies, AreAskedForOnce) {
  usePrinterMIB();
  const Value service = status();
  EXPECT_TRUE(device_.backend.requests.empty());
  ask(service, "suppliesIdentifiers");
  ask(service, "supportedFeatures");
  const std::size_t requests = device_.backend.requests.size();
  EXPECT_GT(requests, 0U);
  ask(service, "supplyLevelForIdentifier:", {stringOf("1")});
  ask(service, "supportedFeatures");
  EXPECT_EQ(device_.backend.requests.size(), requests);
}

TEST_F(LiveSupplies, AreDescribedByFeatures) {
  usePrinterMIB();
  const Value service = status();
  const Value supplies = stringOf("supplies");
  const Value level = stringOf("level");
  const Value identifiers = arrayOf({stringOf("1"), stringOf("2")});
  EXPECT_TRUE(equal(ask(service, "supportedFeatures"), arrayOf({supplies, stringOf("markers")})));
  EXPECT_TRUE(equal(ask(service, "valueForFeature:", {supplies}), identifiers));
  EXPECT_TRUE(equal(ask(service, "identifiersForFeature:", {supplies}), identifiers));
  EXPECT_TRUE(equal(ask(service, "valueForFeature:property:", {supplies, level}),
                    arrayOf({Number::integer(25), Value::null()})));
  EXPECT_TRUE(
      equal(ask(service, "valueForFeature:property:identifier:", {supplies, level, stringOf("1")}),
            Number::integer(25)));
  EXPECT_TRUE(ask(service, "valueForFeature:property:identifier:", {supplies, level, stringOf("2")})
                  .isNil());
  EXPECT_EQ(
      descriptionOf(ask(service, "supportedPropertiesForFeature:", {supplies})),
      descriptionOf(arrayOf({stringOf("name"), level, stringOf("levelInfo"), stringOf("state"),
                             stringOf("type"), stringOf("class"), stringOf("capacity"),
                             stringOf("unit"), stringOf("remainingPages"), stringOf("colorName"),
                             stringOf("rgb"), stringOf("source")})));
}

TEST_F(LiveSupplies, ConformToAllTheirProtocols) {
  const Value service = status();
  for (const Protocol* protocol : {&ADMSuppliesStatus::kProtocol, &ADMSuppliesManagement::kProtocol,
                                   &ADMStatus::kProtocol, &ADMInterface::kProtocol}) {
    EXPECT_TRUE(conformsToProtocol(service, *protocol)) << protocol->name;
  }
  EXPECT_TRUE(ask(service, "suppliesStateAcknowledgment").isNil());
  EXPECT_TRUE(ask(service, "warrantyValue").isNil());
  ask(service, "scheduleRetrieveSuppliesWarrantyValue");
  ask(service, "removeFromRunLoop:forMode:", {RunLoop::currentRunLoop(), stringOf("m")});
}

}  // namespace
}  // namespace commandfilter
