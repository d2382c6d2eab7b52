#include "device_model/DeviceID.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace commandfilter {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(DeviceID, KnowsTheShortKeys) {
  const DeviceID id("MFG:Acme;MDL:M 1;SN:0815;CMD:PCL,LDL;DES:Acme M 1 Series;FWVER:2.1;");
  EXPECT_EQ(id.manufacturer(), "Acme");
  EXPECT_EQ(id.model(), "M 1");
  EXPECT_EQ(id.serialNumber(), "0815");
  EXPECT_EQ(id.description(), "Acme M 1 Series");
  EXPECT_EQ(id.firmwareVersion(), "2.1");
  EXPECT_THAT(id.languages(), ElementsAre("PCL", "LDL"));
}

TEST(DeviceID, KnowsTheLongKeys) {
  const DeviceID id(
      "MANUFACTURER:Acme;COMMAND SET:PS,PCL;MODEL:M1;CLASS:PRINTER;DESCRIPTION:A printer;"
      "SERIALNUMBER:4711;");
  EXPECT_EQ(id.manufacturer(), "Acme");
  EXPECT_EQ(id.model(), "M1");
  EXPECT_EQ(id.serialNumber(), "4711");
  EXPECT_EQ(id.description(), "A printer");
  EXPECT_THAT(id.languages(), ElementsAre("PS", "PCL"));
  EXPECT_EQ(DeviceID("SERN:1").serialNumber(), "1");
  EXPECT_EQ(DeviceID("SERIAL NUMBER:2").serialNumber(), "2");
}

TEST(DeviceID, LooksAwayFromCaseAndBlanks) {
  const DeviceID id(" mfg : Acme Inc ;\r\n Mdl:\tM1\t; Command  Set : PCL , LDL ,, PS ;\n");
  EXPECT_EQ(id.manufacturer(), "Acme Inc");
  EXPECT_EQ(id.model(), "M1");
  EXPECT_THAT(id.languages(), ElementsAre("PCL", "LDL", "PS"));
}

TEST(DeviceID, DoesWithoutTheFinalSemicolon) {
  EXPECT_EQ(DeviceID("MFG:Acme;MDL:M1").model(), "M1");
  EXPECT_THAT(DeviceID("MFG:Acme;CMD:LDL").languages(), ElementsAre("LDL"));
}

TEST(DeviceID, KeepsColonsInValues) { EXPECT_EQ(DeviceID("MDL:M:1;").model(), "M:1"); }

TEST(DeviceID, TakesTheFirstValueThatIsThere) {
  EXPECT_EQ(DeviceID("MDL:;MODEL:M1;").model(), "M1");
  EXPECT_EQ(DeviceID("MDL: ;MDL:M2;MDL:M3;").model(), "M2");
}

TEST(DeviceID, KnowsNothingOfOtherTexts) {
  for (const char* text :
       {"", ";", ":", ";;;:::", "no key", "XMFG:Acme;MF:Acme;MFGX:Acme;", "MDL", "CMD:,, ,;"}) {
    const DeviceID id(text);
    EXPECT_EQ(id.manufacturer(), "") << text;
    EXPECT_EQ(id.model(), "") << text;
    EXPECT_THAT(id.languages(), IsEmpty()) << text;
  }
}

TEST(DeviceIDBytes, AreReadAsTheyAre) {
  EXPECT_EQ(DeviceID::textOfBytes("MFG:Acme;"), "MFG:Acme;");
  EXPECT_EQ(DeviceID::textOfBytes("MFG:\xC3\x84;"), "MFG:\xC3\x84;");
  EXPECT_EQ(DeviceID::textOfBytes(""), "");
}

TEST(DeviceIDBytes, AreISO88591WhenTheyAreNotUTF8) {
  EXPECT_EQ(DeviceID::textOfBytes("MFG:\xC4;"), "MFG:\xC3\x84;");
}

TEST(DeviceIDBytes, EndAtTheFirstNUL) {
  EXPECT_EQ(DeviceID::textOfBytes(std::string_view("MFG:A;\0rest", 11)), "MFG:A;");
}

TEST(DeviceIDBytes, MayBeginWithTheirLength) {
  EXPECT_EQ(DeviceID::textOfBytes(std::string_view("\0\x08MFG:A;", 8)), "MFG:A;");
  EXPECT_EQ(DeviceID::textOfBytes(std::string_view("\0\x06MFG:A;", 8)), "MFG:A;");
  EXPECT_EQ(DeviceID::textOfBytes(std::string_view("\x08\0MFG:A;", 8)), "MFG:A;");
  EXPECT_EQ(DeviceID::textOfBytes(std::string_view("\0\x02", 2)), "");
}

}  // namespace
}  // namespace commandfilter
