#include "device_model/BackendTransport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Doubles.h"

namespace commandfilter {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::ScriptedDevice;

const ObjectID kObject{1, 3, 6, 1};

TEST(BackendTransport, AsksForTheDeviceIDOnce) {
  ScriptedDevice device;
  device.backend.deviceID = "MFG:A;";
  EXPECT_EQ(device.transport.deviceID(), "MFG:A;");
  EXPECT_EQ(device.transport.deviceID(), "MFG:A;");
  EXPECT_THAT(device.backend.requests, ElementsAre("4"));
  EXPECT_THAT(device.backend.timeouts, ElementsAre(20.0));
}

TEST(BackendTransport, AsksOnceForADeviceIDThatThereIsNot) {
  for (const bool silent : {true, false}) {
    ScriptedDevice device;
    device.backend.silent = silent;
    EXPECT_EQ(device.transport.deviceID(), std::nullopt);
    EXPECT_EQ(device.transport.deviceID(), std::nullopt);
    EXPECT_THAT(device.backend.requests, ElementsAre("4"));
  }
}

TEST(BackendTransport, TakesNoEmptyDeviceID) {
  ScriptedDevice device;
  device.backend.deviceID = "";
  EXPECT_EQ(device.transport.deviceID(), std::nullopt);
}

TEST(BackendTransport, TakesNoLateAnswerForAnother) {
  ScriptedDevice device;
  device.backend.deviceID = "MFG:A;";
  device.backend.late = {{6, BackendMessages::kOK, "MFG:Wrong;"}, {7, BackendMessages::kOK, "x"}};
  EXPECT_EQ(device.transport.deviceID(), "MFG:A;");
}

TEST(BackendTransport, DoesNotReadLateAnswersWithoutEnd) {
  ScriptedDevice device;
  device.backend.deviceID = "MFG:A;";
  for (int i = 0; i < 1000; ++i) device.backend.late.push_back({6, BackendMessages::kOK, "late"});
  EXPECT_EQ(device.transport.deviceID(), std::nullopt);
}

TEST(BackendTransport, ReadsAnObject) {
  ScriptedDevice device;
  device.backend.objects = testing::BackendScript::Objects{{".1.3.6.1", std::string("\x08\0", 2)}};
  EXPECT_EQ(device.transport.snmpValue(kObject), std::string("\x08\0", 2));
  EXPECT_THAT(device.backend.requests, ElementsAre("6 .1.3.6.1"));
}

TEST(BackendTransport, KnowsThatAnObjectIsMissing) {
  ScriptedDevice device;
  device.backend.objects.emplace();
  EXPECT_EQ(device.transport.snmpValue(kObject), std::nullopt);
  // The agent answered, so others are asked for.
  EXPECT_EQ(device.transport.snmpValue({1, 3, 6, 2}), std::nullopt);
  EXPECT_EQ(device.backend.requests.size(), 2U);
}

TEST(BackendTransport, TakesTheAnswerForTheObjectOnly) {
  ScriptedDevice device;
  device.backend.objects.emplace();
  device.backend.late = {{6, BackendMessages::kOK, std::string(".1.3.9\0late", 11)}};
  EXPECT_EQ(device.transport.snmpValue(kObject), std::nullopt);
}

TEST(BackendTransport, AsksNoFurtherWithoutAnAgent) {
  for (const bool silent : {true, false}) {
    ScriptedDevice device;
    device.backend.silent = silent;
    EXPECT_EQ(device.transport.snmpValue(kObject), std::nullopt);
    EXPECT_THAT(device.transport.snmpTable(kObject), IsEmpty());
    EXPECT_EQ(device.backend.requests.size(), 1U);
  }
}

TEST(BackendTransport, StillAsksForTheDeviceIDWithoutAnAgent) {
  ScriptedDevice device;
  device.backend.deviceID = "MFG:A;";
  EXPECT_EQ(device.transport.snmpValue(kObject), std::nullopt);
  EXPECT_EQ(device.transport.deviceID(), "MFG:A;");
}

TEST(BackendTransport, WalksATable) {
  ScriptedDevice device;
  device.backend.objects = testing::BackendScript::Objects{{".1.3.6.1.10", "c"},
                                                           {".1.3.6.1.2", "b"},
                                                           {".1.3.6.1.1", "a"},
                                                           {".1.3.6.2", "no part of it"}};
  const std::vector<SNMPEntry> entries = device.transport.snmpTable(kObject);
  ASSERT_EQ(entries.size(), 3U);
  EXPECT_EQ(entries[0].value, "a");
  EXPECT_EQ(entries[1].value, "b");
  EXPECT_EQ(entries[2].value, "c");
  EXPECT_EQ(device.backend.requests.size(), 4U);
}

TEST(BackendTransport, EndsAtTheEndOfTheAgentsObjects) {
  ScriptedDevice device;
  device.backend.objects = testing::BackendScript::Objects{{".1.3.6.1.1", "a"}};
  EXPECT_EQ(device.transport.snmpTable(kObject).size(), 1U);
}

TEST(BackendTransport, DoesNotGoInCircles) {
  ScriptedDevice device;
  for (int i = 0; i < 3; ++i) {
    device.backend.late.push_back({7, BackendMessages::kOK, std::string(".1.3.6.1.5\0x", 12)});
  }
  EXPECT_EQ(device.transport.snmpTable(kObject).size(), 1U);
}

TEST(BackendTransport, EndsATableThatDoesNot) {
  ScriptedDevice device;
  device.backend.objects.emplace();
  for (std::size_t i = 0; i < BackendTransport::kMostEntries + 10; ++i) {
    device.backend.late.push_back(
        {7, BackendMessages::kOK, textOfObjectID({1, 3, 6, 1, static_cast<std::uint32_t>(i)})});
  }
  EXPECT_EQ(device.transport.snmpTable(kObject).size(), BackendTransport::kMostEntries);
}

TEST(BackendTransport, EndsATableWhoseValuesTakeTooMuchRoom) {
  ScriptedDevice device;
  device.backend.objects.emplace();
  const std::string large = '\0' + std::string(65'000, 'x');
  for (std::uint32_t i = 0; i < 1000; ++i) {
    device.backend.late.push_back(
        {7, BackendMessages::kOK, textOfObjectID({1, 3, 6, 1, i}) + large});
  }
  EXPECT_EQ(device.transport.snmpTable(kObject).size(), 17U);
}

TEST(BackendTransport, GivesATableNoMoreThanItsTime) {
  ScriptedDevice device;
  EXPECT_THAT(device.transport.snmpTable(kObject), IsEmpty());
  EXPECT_THAT(device.backend.timeouts, ElementsAre(BackendTransport::kRequestSeconds));
  testing::BackendScript script;
  script.objects = testing::BackendScript::Objects{{".1.3.6.1.1", "a"}};
  constexpr double kShort = 5;
  BackendTransport hasty(std::make_unique<testing::ScriptedMessages>(script), kShort);
  EXPECT_EQ(hasty.snmpTable(kObject).size(), 1U);
  EXPECT_THAT(script.timeouts, ::testing::Each(::testing::Le(kShort)));
}

TEST(BackendTransport, AsksNoFurtherWhenATableTookTooLong) {
  testing::BackendScript script;
  script.objects = testing::BackendScript::Objects{{".1.3.6.1", "a"}};
  BackendTransport late(std::make_unique<testing::ScriptedMessages>(script), 0);
  EXPECT_THAT(late.snmpTable(kObject), IsEmpty());
  EXPECT_EQ(late.snmpValue(kObject), std::nullopt);
  EXPECT_THAT(script.requests, IsEmpty());
}

TEST(BackendTransport, AsksAgainForWhatIsLostOnTheWay) {
  ScriptedDevice device;
  device.backend.objects =
      testing::BackendScript::Objects{{".1.3.6.1", "x"}, {".1.3.6.1.1", "a"}, {".1.3.6.1.2", "b"}};
  // The second object's first two packets, and the first one of the value.
  device.backend.lost = {1, 2, 5};
  const std::vector<SNMPEntry> entries = device.transport.snmpTable(kObject);
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries[1].value, "b");
  device.backend.lost.insert(device.backend.requests.size());
  EXPECT_EQ(device.transport.snmpValue(kObject), "x");
}

TEST(BackendTransport, GivesAnAgentUpThatIsGone) {
  ScriptedDevice device;
  device.backend.objects = testing::BackendScript::Objects{{".1.3.6.1", "x"}};
  EXPECT_EQ(device.transport.snmpValue(kObject), "x");
  device.backend.objects.reset();
  EXPECT_EQ(device.transport.snmpValue(kObject), std::nullopt);
  EXPECT_EQ(device.backend.requests.size(), 4U);
  EXPECT_EQ(device.transport.snmpValue(kObject), std::nullopt);
  EXPECT_EQ(device.backend.requests.size(), 4U);
  // The next one may have an agent or not.
  device.transport.forgetAnswers();
  EXPECT_EQ(device.transport.snmpValue(kObject), std::nullopt);
  EXPECT_EQ(device.backend.requests.size(), 5U);
}

// An answer that the backend has given up is the first that it reads when it asks for the next
// object, and the one for that object comes first the next time.
TEST(BackendTransport, GoesOnBehindAnswersThatAreOneLate) {
  ScriptedDevice device;
  device.backend.objects = testing::BackendScript::Objects{
      {".1.3.6.1.1", "a"}, {".1.3.6.1.2", "b"}, {".1.3.6.1.3", "c"}, {".1.3.6.2", "end"}};
  EXPECT_EQ(device.transport.snmpTable(kObject).size(), 3U);
  device.backend.late = {{7, BackendMessages::kOK, std::string(".1.3.6.1.1\0a", 12)},
                         {7, BackendMessages::kOK, std::string(".1.3.6.1.1\0a", 12)}};
  const std::vector<SNMPEntry> entries = device.transport.snmpTable(kObject);
  ASSERT_EQ(entries.size(), 3U);
  EXPECT_EQ(entries[2].value, "c");
  device.backend.objects->emplace(".1.3.6.1", "x");
  device.backend.late = {{6, BackendMessages::kOK, std::string(".1.3.9\0y", 8)}};
  EXPECT_EQ(device.transport.snmpValue(kObject), "x");
}

TEST(BackendTransport, TakesRubbishForNoAgent) {
  ScriptedDevice device;
  device.backend.late = {{6, BackendMessages::kOK, "rubbish"}};
  EXPECT_EQ(device.transport.snmpValue(kObject), std::nullopt);
  EXPECT_EQ(device.transport.snmpValue(kObject), std::nullopt);
  EXPECT_EQ(device.backend.requests.size(), 1U);
}

TEST(BackendTransport, HasNothingWithoutABackend) {
  ScriptedDevice device;
  device.backend.present = false;
  EXPECT_EQ(device.transport.deviceID(), std::nullopt);
  EXPECT_EQ(device.transport.snmpValue(kObject), std::nullopt);
}

}  // namespace
}  // namespace commandfilter
