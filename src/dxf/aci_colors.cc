#include "dxf/aci_colors.h"

#include <array>

namespace lmt::dxf {
namespace {

// Indexes 10..249 run through 24 hues in 15 degree steps; within a hue the
// ten entries pair a full and a half-saturated colour at five brightness
// levels. The greys 250..255 and the first nine are fixed.
std::array<Rgb, 256> BuildPalette() {
  std::array<Rgb, 256> p{};
  const Rgb first[10] = {{0, 0, 0},      {255, 0, 0},     {255, 255, 0},
                         {0, 255, 0},    {0, 255, 255},   {0, 0, 255},
                         {255, 0, 255},  {255, 255, 255}, {128, 128, 128},
                         {192, 192, 192}};
  for (int i = 0; i < 10; ++i) p[i] = first[i];
  const double levels[5] = {255, 165, 127, 76, 38};
  for (int i = 10; i < 250; ++i) {
    const int hue = (i - 10) / 10;  // 0..23
    const int shade = i % 10;
    const double value = levels[shade / 2];
    const double low = (shade % 2 == 0) ? 0.0 : value / 2;
    // Hue h in [0, 6) sextants; the rising or falling channel is linear.
    const double h = hue / 4.0;
    const int sextant = static_cast<int>(h);
    const double f = h - sextant;
    const double rise = low + (value - low) * f;
    const double fall = value - (value - low) * f;
    double r = 0, g = 0, b = 0;
    switch (sextant) {
      case 0:
        r = value, g = rise, b = low;
        break;
      case 1:
        r = fall, g = value, b = low;
        break;
      case 2:
        r = low, g = value, b = rise;
        break;
      case 3:
        r = low, g = fall, b = value;
        break;
      case 4:
        r = rise, g = low, b = value;
        break;
      default:
        r = value, g = low, b = fall;
        break;
    }
    p[i] = Rgb{static_cast<uint8_t>(r), static_cast<uint8_t>(g),
               static_cast<uint8_t>(b)};
  }
  const uint8_t greys[6] = {51, 80, 105, 130, 190, 255};
  for (int i = 0; i < 6; ++i) p[250 + i] = Rgb{greys[i], greys[i], greys[i]};
  return p;
}

}  // namespace

Rgb AciColor(int index) {
  static const std::array<Rgb, 256> kPalette = BuildPalette();
  if (index < 1 || index > 255) return Rgb{};
  return kPalette[index];
}

Rgb TrueColor(int64_t value) {
  return Rgb{static_cast<uint8_t>((value >> 16) & 0xFF),
             static_cast<uint8_t>((value >> 8) & 0xFF),
             static_cast<uint8_t>(value & 0xFF)};
}

}  // namespace lmt::dxf
