#include "device_model/ColorNames.h"

#include <array>

#include "runtime/Text.h"

namespace commandfilter {

namespace {

struct Color {
  std::string_view name;
  std::string_view rgb;
};
// Where two names have one colour, the first is the one for the colour.
constexpr std::array kColors{
    Color{"black", "#000000"},       Color{"photo black", "#000000"},
    Color{"matte black", "#000000"}, Color{"cyan", "#00FFFF"},
    Color{"magenta", "#FF00FF"},     Color{"yellow", "#FFFF00"},
    Color{"light cyan", "#E0FFFF"},  Color{"light magenta", "#FFE0FF"},
    Color{"gray", "#808080"},        Color{"grey", "#808080"},
    Color{"light gray", "#D3D3D3"},  Color{"light black", "#606060"},
    Color{"red", "#FF0000"},         Color{"green", "#00FF00"},
    Color{"blue", "#0000FF"},        Color{"orange", "#FFA500"},
    Color{"violet", "#9000FF"},      Color{"white", "#FFFFFF"},
};

}  // namespace

std::string rgbOfColorName(std::string_view name) {
  const std::string wanted = lowercase(name);
  for (const Color& color : kColors) {
    if (color.name == wanted) return std::string(color.rgb);
  }
  return {};
}

std::string colorNameOfRGB(std::string_view rgb) {
  const std::string wanted = uppercase(rgb);
  for (const Color& color : kColors) {
    if (color.rgb == wanted) return std::string(color.name);
  }
  return {};
}

}  // namespace commandfilter
