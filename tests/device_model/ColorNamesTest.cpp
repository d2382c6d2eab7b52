#include "device_model/ColorNames.h"

#include <gtest/gtest.h>

namespace commandfilter {
namespace {

TEST(ColorNames, HaveTheirColors) {
  constexpr struct {
    const char* name;
    const char* rgb;
  } kColors[] = {
      {"black", "#000000"},      {"photo black", "#000000"},   {"matte black", "#000000"},
      {"cyan", "#00FFFF"},       {"magenta", "#FF00FF"},       {"yellow", "#FFFF00"},
      {"light cyan", "#E0FFFF"}, {"light magenta", "#FFE0FF"}, {"gray", "#808080"},
      {"grey", "#808080"},       {"light gray", "#D3D3D3"},    {"light black", "#606060"},
      {"red", "#FF0000"},        {"green", "#00FF00"},         {"blue", "#0000FF"},
      {"orange", "#FFA500"},     {"violet", "#9000FF"},        {"white", "#FFFFFF"},
  };
  for (const auto& [name, rgb] : kColors) EXPECT_EQ(rgbOfColorName(name), rgb) << name;
  EXPECT_EQ(rgbOfColorName("Photo Black"), "#000000");
  EXPECT_EQ(rgbOfColorName("GRAY"), "#808080");
  EXPECT_EQ(rgbOfColorName("none"), "");
  EXPECT_EQ(rgbOfColorName(""), "");
}

TEST(Colors, HaveNames) {
  EXPECT_EQ(colorNameOfRGB("#000000"), "black");
  EXPECT_EQ(colorNameOfRGB("#ff00ff"), "magenta");
  EXPECT_EQ(colorNameOfRGB("#808080"), "gray");
  EXPECT_EQ(colorNameOfRGB("#123456"), "");
}

}  // namespace
}  // namespace commandfilter
