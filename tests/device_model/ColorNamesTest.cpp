#include "device_model/ColorNames.h"

#include <gtest/gtest.h>

namespace commandfilter {
namespace {

TEST(ColorNames, HaveTheirColors) {
  EXPECT_EQ(rgbOfColorName("cyan"), "#00FFFF");
  EXPECT_EQ(rgbOfColorName("Photo Black"), "#000000");
  EXPECT_EQ(rgbOfColorName("grey"), rgbOfColorName("GRAY"));
  EXPECT_EQ(rgbOfColorName("none"), "");
  EXPECT_EQ(rgbOfColorName(""), "");
}

TEST(Colors, HaveNames) {
  EXPECT_EQ(colorNameOfRGB("#000000"), "black");
  EXPECT_EQ(colorNameOfRGB("#ff00ff"), "magenta");
  EXPECT_EQ(colorNameOfRGB("#123456"), "");
}

}  // namespace
}  // namespace commandfilter
