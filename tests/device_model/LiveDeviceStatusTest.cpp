#include "device_model/LiveDeviceStatus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "Doubles.h"
#include "TestValues.h"
#include "runtime/Comparison.h"
#include "runtime/Description.h"
#include "runtime/Send.h"

namespace commandfilter {
namespace {

using testing::arrayOf;
using testing::ask;
using ::testing::IsEmpty;
using testing::ScriptedDevice;
using testing::stringOf;

class LiveDevice : public ::testing::Test {
 protected:
  Value status() { return device_.resolved()->statusService(ADMDeviceStatus::kProtocol); }
  // The answer of a new service, as text.
  std::string answer(const char* selector) { return descriptionOf(ask(status(), selector)); }
  void useAgent() {
    device_.backend.objects = testing::BackendScript::Objects{
        {".1.3.6.1.2.1.25.3.2.1.5.1", "2"},
        {".1.3.6.1.2.1.25.3.5.1.1.1", "3"},
        {".1.3.6.1.2.1.25.3.5.1.2.1", std::string("\x24\0", 2)},
        {".1.3.6.1.2.1.43.5.1.1.17.1", "AGENT-1"},
        {".1.3.6.1.2.1.43.10.2.1.4.1.1", "1234"},
        {".1.3.6.1.2.1.43.16.5.1.2.1.1", "Ready"},
        {".1.3.6.1.2.1.43.16.5.1.2.1.2", "Tray 1"},
    };
  }

  ScriptedDevice device_;
};

TEST_F(LiveDevice, TellsWhatTheAgentKnows) {
  useAgent();
  EXPECT_EQ(answer("deviceState"), "idle");
  EXPECT_TRUE(equal(ask(status(), "deviceSubstate"),
                    arrayOf({stringOf("media-jam"), stringOf("marker-supply-low")})));
  EXPECT_EQ(answer("deviceSerialNumber"), "AGENT-1");
  EXPECT_TRUE(
      equal(ask(status(), "deviceUIState"), arrayOf({stringOf("Ready"), stringOf("Tray 1")})));
}

TEST_F(LiveDevice, TellsWhatTheDeviceIDKnows) {
  useAgent();
  device_.backend.deviceID = "MFG:Acme;MDL:M1;SN:ID-1;DES:Acme M1;FWVER:2.0;";
  EXPECT_EQ(answer("deviceSerialNumber"), "ID-1");
  EXPECT_EQ(answer("humanReadableModelName"), "Acme M1");
  EXPECT_EQ(answer("firmwareVersion"), "2.0");
}

TEST_F(LiveDevice, TellsWhatTheQueueKnowsWhenTheAgentDoesNot) {
  device_.queue.ipp = {{"printer-state-reasons", {"none"}},
                       {"printer-make-and-model", {"Acme M1 PS"}},
                       {"printer-resolution-supported", {"600dpi", "1200x600dpi"}}};
  device_.queue.parts.resource = "/?serial=URI-1";
  EXPECT_EQ(answer("deviceState"), "(null)");
  EXPECT_TRUE(equal(ask(status(), "deviceSubstate"), arrayOf({})));
  device_.queue.ipp["printer-state-reasons"] = {"door-open-report", "cups-missing-filter-warning",
                                                "media-low-warning"};
  EXPECT_TRUE(equal(ask(status(), "deviceSubstate"),
                    arrayOf({stringOf("door-open-report"), stringOf("media-low-warning")})));
  EXPECT_EQ(answer("deviceSerialNumber"), "URI-1");
  EXPECT_EQ(answer("humanReadableModelName"), "Acme M1 PS");
  EXPECT_TRUE(equal(ask(status(), "supportedResolutions"),
                    arrayOf({stringOf("600dpi"), stringOf("1200x600dpi")})));
}

TEST_F(LiveDevice, HasNilForWhatNobodyKnows) {
  for (const char* selector : {"deviceState",
                               "batteryLevel",
                               "batteryCondition",
                               "batteryLevelTrigger",
                               "deviceSerialNumber",
                               "firmwareVersion",
                               "deviceSubstate",
                               "isDuplexerInstalled",
                               "supportedResolutions",
                               "reserveModeState",
                               "humanReadableModelName",
                               "productNumber",
                               "regionCode",
                               "printheadAlignmentState",
                               "bbcMediaState",
                               "photoTrayState",
                               "diaperState",
                               "loidSensorState",
                               "cameraState",
                               "photoCardState",
                               "photoProofSheetState",
                               "scannerState",
                               "faxState",
                               "deviceUIState"}) {
    EXPECT_EQ(answer(selector), "(null)") << selector;
  }
}

TEST_F(LiveDevice, KnowsNothingFromAnswersThatSayNothing) {
  device_.backend.objects = testing::BackendScript::Objects{
      {".1.3.6.1.2.1.25.3.2.1.5.1", "down"},
      {".1.3.6.1.2.1.25.3.5.1.1.1", std::string("\0\xFF", 2)},
      {".1.3.6.1.2.1.43.5.1.1.17.1", std::string(" \0", 2)},
      {".1.3.6.1.2.1.43.10.2.1.4.1.1", "-2"},
  };
  device_.queue.parts.resource = "/?serial=URI-1";
  EXPECT_EQ(answer("deviceState"), "(null)");
  EXPECT_EQ(answer("deviceSerialNumber"), "URI-1");
  EXPECT_TRUE(ask(status(), "valueForFeature:", {stringOf("pageCount")}).isNil());
}

TEST_F(LiveDevice, IsAskedOnceForEachFact) {
  useAgent();
  const Value service = status();
  EXPECT_THAT(device_.backend.requests, IsEmpty());
  for (int i = 0; i < 2; ++i) {
    for (const char* selector : {"deviceState", "deviceSubstate", "deviceSerialNumber",
                                 "deviceUIState", "supportedFeatures"}) {
      ask(service, selector);
    }
  }
  std::vector<std::string> requests = device_.backend.requests;
  std::ranges::sort(requests);
  EXPECT_EQ(std::ranges::adjacent_find(requests), requests.end());
}

// The values of a property, for all of a feature's identifiers.
Value propertyOf(const Value& service, const char* feature, const char* property) {
  return ask(service, "valueForFeature:property:", {stringOf(feature), stringOf(property)});
}

TEST_F(LiveDevice, DescribesItselfByFeatures) {
  useAgent();
  device_.backend.deviceID = "MFG:Acme;MDL:M1;";
  const Value service = status();
  EXPECT_TRUE(
      equal(ask(service, "supportedFeatures"),
            arrayOf({stringOf("state"), stringOf("model"), stringOf("pageCount"),
                     stringOf("alerts"), stringOf("inputTrays"), stringOf("installableOptions")})));
  EXPECT_TRUE(equal(propertyOf(service, "alerts", "code"), arrayOf({})));
  EXPECT_TRUE(equal(ask(service, "valueForFeature:", {stringOf("state")}), stringOf("idle")));
  EXPECT_TRUE(
      equal(ask(service, "valueForFeature:", {stringOf("pageCount")}), Number::integer(1234)));
  const auto property = [&service](const char* name) {
    return descriptionOf(
        ask(service, "valueForFeature:property:", {stringOf("model"), stringOf(name)}));
  };
  EXPECT_EQ(property("vendor"), "Acme");
  EXPECT_EQ(property("name"), "M1");
  EXPECT_EQ(property("serialNumber"), "AGENT-1");
  EXPECT_EQ(property("deviceID"), "MFG:Acme;MDL:M1;");
  EXPECT_EQ(property("firmwareVersion"), "(null)");
  EXPECT_TRUE(equal(ask(service, "isSupportedProperty:forFeature:",
                        {stringOf("firmwareVersion"), stringOf("model")}),
                    Value::boolean(true)));
  EXPECT_TRUE(equal(ask(service, "isSupportedFeature:", {stringOf("ink")}), Value::boolean(false)));
  EXPECT_TRUE(equal(ask(service, "supportedPropertiesForFeature:", {stringOf("state")}),
                    arrayOf({stringOf("reasons"), stringOf("source")})));
  EXPECT_TRUE(ask(service, "identifiersForFeature:", {stringOf("state")}).isNil());
}

TEST_F(LiveDevice, SaysWhoToldAboutItsState) {
  {
    ScriptedDevice silent;
    silent.queue.ipp = {{"printer-state-reasons", {"door-open-report"}}};
    const Value service = silent.resolved()->statusService(ADMDeviceStatus::kProtocol);
    EXPECT_EQ(descriptionOf(propertyOf(service, "state", "source")), "queue");
  }
  useAgent();
  EXPECT_EQ(descriptionOf(propertyOf(status(), "state", "source")), "device");
}

TEST_F(LiveDevice, ListsItsTraysAndAlerts) {
  device_.backend.objects = testing::BackendScript::Objects{
      {".1.3.6.1.2.1.43.8.2.1.2.1.1", "3"},
      {".1.3.6.1.2.1.43.8.2.1.2.1.2", "99"},
      {".1.3.6.1.2.1.43.8.2.1.2.2.1", "5"},
      {".1.3.6.1.2.1.43.8.2.1.13.1.1", "Tray 1"},
      {".1.3.6.1.2.1.43.8.2.1.18.1.2", "Lower cassette"},
      {".1.3.6.1.2.1.43.18.1.1.2.1.7", "3"},
      {".1.3.6.1.2.1.43.18.1.1.7.1.7", "1001"},
      {".1.3.6.1.2.1.43.18.1.1.7.1.8", "x"},
      {".1.3.6.1.2.1.43.18.1.1.8.1.7", "Fuser cold"},
  };
  const Value service = status();
  EXPECT_TRUE(equal(propertyOf(service, "inputTrays", "name"),
                    arrayOf({stringOf("Tray 1"), stringOf("Lower cassette")})));
  EXPECT_TRUE(equal(propertyOf(service, "inputTrays", "type"),
                    arrayOf({stringOf("sheetFeedAutoRemovableTray"), Value::null()})))
      << "the second printer's trays do not count";
  EXPECT_TRUE(equal(propertyOf(service, "alerts", "code"),
                    arrayOf({Number::integer(1001), Value::null()})));
  EXPECT_TRUE(equal(propertyOf(service, "alerts", "severity"),
                    arrayOf({stringOf("critical"), Value::null()})));
  EXPECT_TRUE(equal(propertyOf(service, "alerts", "description"),
                    arrayOf({stringOf("Fuser cold"), Value::null()})));
}

TEST_F(LiveDevice, HasADuplexerWhenAMediaPathTurnsTheSheets) {
  const auto installed = [this](std::initializer_list<const char*> types) {
    device_.backend.objects.emplace();
    int row = 1;
    for (const char* type : types) {
      (*device_.backend.objects)[".1.3.6.1.2.1.43.13.4.1.9.1." + std::to_string(row++)] = type;
    }
    return descriptionOf(ask(status(), "isDuplexerInstalled"));
  };
  EXPECT_EQ(installed({"5", "3"}), "1");
  EXPECT_EQ(installed({"4"}), "1");
  EXPECT_EQ(installed({"5"}), "0");
  EXPECT_EQ(installed({"1", "2"}), "(null)");
  EXPECT_EQ(installed({}), "(null)");
}

TEST_F(LiveDevice, ListsWhatItsPPDSaysCanBeBuiltIn) {
  device_.queue.options = {{"Duplexer", "Duplex Unit", "False", {"True", "False"}}};
  const Value service = status();
  EXPECT_TRUE(equal(ask(service, "identifiersForFeature:", {stringOf("installableOptions")}),
                    arrayOf({stringOf("Duplexer")})));
  const auto property = [&service](const char* name) {
    return ask(service, "valueForFeature:property:identifier:",
               {stringOf("installableOptions"), stringOf(name), stringOf("Duplexer")});
  };
  EXPECT_EQ(descriptionOf(property("text")), "Duplex Unit");
  EXPECT_EQ(descriptionOf(property("current")), "False");
  EXPECT_TRUE(equal(property("choices"), arrayOf({stringOf("True"), stringOf("False")})));
}

TEST_F(LiveDevice, HasWhatEveryServiceHas) {
  const Ref<LiveServiceInfo> info = device_.resolved();
  const Value service = info->statusService(ADMDeviceStatus::kProtocol);
  EXPECT_EQ(ask(service, "serviceInfo").object(), static_cast<Object*>(info.get()));
  EXPECT_TRUE(ask(service, "parameters").isNil());
  ask(service, "setParameters:", {stringOf("p")});
  EXPECT_TRUE(equal(ask(service, "parameters"), stringOf("p")));
  EXPECT_TRUE(equal(ask(service, "isAvailable"), Value::boolean(false)));
  ask(service, "addObserver:selector:feature:", {stringOf("o"), stringOf("s"), stringOf("f")});
  ask(service, "removeObserver:", {stringOf("o")});
  ask(service, "scheduleInRunLoop:forMode:", {RunLoop::currentRunLoop(), stringOf("m")});
}

}  // namespace
}  // namespace commandfilter
