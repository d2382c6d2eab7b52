#include "device_model/DeviceIDInterpreter.h"

#include <gtest/gtest.h>

#include "TestValues.h"

namespace commandfilter {
namespace {

using testing::arrayOf;
using testing::stringOf;

Value languagesOf(const char* text) {
  return DeviceIDInterpreter::initWithDeviceIDString(String::create(text).get())->languages();
}

TEST(DeviceIDInterpreter, ListsTheLanguagesInTheirOrder) {
  EXPECT_EQ(Value(languagesOf("CMD:PCL, LDL;"))
                .object()
                ->isEqual(arrayOf({stringOf("PCL"), stringOf("LDL")})),
            true);
}

TEST(DeviceIDInterpreter, HasNoListWithoutLanguages) {
  EXPECT_TRUE(languagesOf("MFG:Acme;").isNil());
  EXPECT_TRUE(languagesOf("CMD:;").isNil());
}

TEST(DeviceIDInterpreter, RefusesNoID) {
  EXPECT_EQ(DeviceIDInterpreter::initWithDeviceIDString(nullptr), nullptr);
}

TEST(DeviceIDInterpreter, IsFoundByTheFrameworksName) {
  EXPECT_EQ(DeviceIDInterpreter::kClass.name, "ADMDeviceIDInterpreter");
  EXPECT_TRUE(DeviceIDInterpreter::kClass.conformsToProtocol(ADMDeviceIDInterpreter::kProtocol));
  EXPECT_NE(DeviceIDInterpreter::kClass.initializer(Selector("initWithDeviceIDString:")), nullptr);
}

}  // namespace
}  // namespace commandfilter
