#include "device_model/SimulatedStatusService.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "Doubles.h"
#include "TestValues.h"
#include "runtime/Cast.h"
#include "runtime/Comparison.h"
#include "runtime/Send.h"
#include "runtime/device_model/ADMDeviceStatus.h"
#include "runtime/device_model/ADMSuppliesManagement.h"
#include "runtime/device_model/ADMSuppliesStatus.h"

namespace commandfilter {
namespace {

using testing::ask;
using testing::plist;
using testing::reasonOf;
using testing::stringOf;

constexpr std::array kFeatureSelectors{
    "supportedFeatures",
    "isSupportedFeature:",
    "supportedPropertiesForFeature:",
    "isSupportedProperty:forFeature:",
    "identifiersForFeature:",
    "valueForFeature:",
    "valueForFeature:property:",
    "valueForFeature:property:identifier:",
};

Value serviceOf(const std::string& entries, const Protocol* protocol = nullptr) {
  const Value description = plist("<dict>" + entries + "</dict>");
  return SimulatedStatusService::create(*castTo<Dictionary>(description), protocol);
}

const std::string kMessages =
    "<key>Messages</key><dict><key>deviceState</key><string>idle</string>"
    "<key>level:</key><dict><key>K</key><integer>7</integer><key>(null)</key><integer>8</integer>"
    "<key>12</key><integer>9</integer></dict>"
    "<key>a:b:</key><string>both</string></dict>";
const std::string kFeatures =
    "<key>Features</key><dict><key>ink</key><dict><key>Value</key><string>some</string>"
    "<key>Properties</key><dict><key>level</key><dict><key>Value</key><integer>5</integer>"
    "<key>Identifiers</key><dict><key>K</key><integer>3</integer></dict></dict></dict>"
    "</dict></dict>";

TEST(SimulatedStatusService, AnswersWhatIsDescribed) {
  const Value service = serviceOf(kMessages);
  EXPECT_TRUE(equal(ask(service, "deviceState"), stringOf("idle")));
  EXPECT_TRUE(equal(ask(service, "level:", {stringOf("K")}), Number::integer(7)));
  EXPECT_TRUE(equal(ask(service, "a:b:", {Value(), stringOf("x")}), stringOf("both")));
}

TEST(SimulatedStatusService, AnswersManyMessagesByTurns) {
  constexpr int kMessageCount = 100;
  std::string messages;
  for (int i = 0; i < kMessageCount; ++i) {
    const std::string number = std::to_string(i);
    messages += "<key>message" + number + "</key><integer>" + number + "</integer>";
  }
  const Value service = serviceOf("<key>Messages</key><dict>" + messages + "</dict>" + kFeatures);
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < kMessageCount; ++i) {
      const std::string name = "message" + std::to_string(i);
      EXPECT_TRUE(respondsToSelector(service, Selector(name)));
      EXPECT_TRUE(equal(ask(service, name), Number::integer(i)));
      EXPECT_TRUE(equal(ask(service, "valueForFeature:", {stringOf("ink")}), stringOf("some")));
      EXPECT_FALSE(respondsToSelector(service, Selector("no" + name)));
    }
  }
}

TEST(SimulatedStatusService, LooksTheArgumentsTextUp) {
  const Value service = serviceOf(kMessages);
  EXPECT_TRUE(equal(ask(service, "level:", {Number::integer(12)}), Number::integer(9)));
  EXPECT_TRUE(equal(ask(service, "level:", {Value()}), Number::integer(8)));
  EXPECT_TRUE(ask(service, "level:", {stringOf("C")}).isNil());
}

TEST(SimulatedStatusService, RespondsToNothingElse) {
  const Value service = serviceOf(kMessages);
  EXPECT_TRUE(respondsToSelector(service, Selector("deviceState")));
  EXPECT_TRUE(respondsToSelector(service, Selector("level:")));
  EXPECT_FALSE(respondsToSelector(service, Selector("level")));
  EXPECT_FALSE(respondsToSelector(service, Selector("batteryLevel")));
  EXPECT_NE(reasonOf([&] { static_cast<void>(ask(service, "batteryLevel")); }), "");
  for (const char* selector : kFeatureSelectors) {
    EXPECT_FALSE(respondsToSelector(service, Selector(selector))) << selector;
  }
}

TEST(SimulatedStatusService, DescribesItsMessagesAsObjectMethods) {
  const Value service = serviceOf(kMessages);
  const MethodSignature signature = methodSignatureForSelector(service, Selector("a:b:"));
  EXPECT_EQ(signature.numberOfArguments(), 4U);
  EXPECT_EQ(signature.methodReturnType(), "@");
  EXPECT_EQ(signature.argumentTypeAtIndex(3), "@");
  EXPECT_FALSE(methodSignatureForSelector(service, Selector("batteryLevel")));
}

TEST(SimulatedStatusService, AnswersTheFeatureMessagesWhenItHasFeatures) {
  const Value service = serviceOf(kFeatures);
  for (const char* selector : kFeatureSelectors) {
    EXPECT_TRUE(respondsToSelector(service, Selector(selector))) << selector;
  }
  const Value ink = stringOf("ink");
  const Value level = stringOf("level");
  EXPECT_TRUE(equal(ask(service, "supportedFeatures"), testing::arrayOf({ink})));
  EXPECT_TRUE(equal(ask(service, "isSupportedFeature:", {ink}), Value::boolean(true)));
  EXPECT_TRUE(equal(ask(service, "isSupportedFeature:", {level}), Value::boolean(false)));
  EXPECT_TRUE(
      equal(ask(service, "supportedPropertiesForFeature:", {ink}), testing::arrayOf({level})));
  EXPECT_TRUE(
      equal(ask(service, "isSupportedProperty:forFeature:", {level, ink}), Value::boolean(true)));
  EXPECT_TRUE(ask(service, "identifiersForFeature:", {ink}).isNil());
  EXPECT_TRUE(equal(ask(service, "valueForFeature:", {ink}), stringOf("some")));
  EXPECT_TRUE(equal(ask(service, "valueForFeature:property:", {ink, level}), Number::integer(5)));
  EXPECT_TRUE(
      equal(ask(service, "valueForFeature:property:identifier:", {ink, level, stringOf("K")}),
            Number::integer(3)));
  EXPECT_EQ(methodSignatureForSelector(service, Selector("isSupportedFeature:")).methodReturnType(),
            "c");
  EXPECT_FALSE(respondsToSelector(service, Selector("deviceState")));
}

TEST(SimulatedStatusService, PrefersADescribedMessageToAFeatureMessage) {
  const Value service = serviceOf(
      "<key>Messages</key><dict><key>valueForFeature:</key><dict><key>ink</key>"
      "<string>described</string></dict><key>isSupportedFeature:</key><dict/></dict>" +
      kFeatures);
  EXPECT_TRUE(equal(ask(service, "valueForFeature:", {stringOf("ink")}), stringOf("described")));
  EXPECT_TRUE(ask(service, "valueForFeature:", {stringOf("other")}).isNil());
  EXPECT_TRUE(ask(service, "isSupportedFeature:", {stringOf("ink")}).isNil());
  EXPECT_EQ(methodSignatureForSelector(service, Selector("isSupportedFeature:")).methodReturnType(),
            "@");
}

TEST(SimulatedStatusService, ConformsToItsProtocolAndWhatThatRefines) {
  const Value service = serviceOf("", &ADMSuppliesStatus::kProtocol);
  EXPECT_TRUE(conformsToProtocol(service, ADMSuppliesStatus::kProtocol));
  EXPECT_TRUE(conformsToProtocol(service, ADMSuppliesManagement::kProtocol));
  EXPECT_TRUE(conformsToProtocol(service, ADMInterface::kProtocol));
  EXPECT_FALSE(conformsToProtocol(service, ADMDeviceStatus::kProtocol));
  EXPECT_FALSE(conformsToProtocol(serviceOf(""), ADMInterface::kProtocol));
}

}  // namespace
}  // namespace commandfilter
