#include "view/Colors.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velt::view {
namespace {

constexpr std::uint32_t foreground = 7;

constexpr std::array<std::uint32_t, 10> firstColors = {0x000000, 0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF,
                                                       0x0000FF, 0xFF00FF, 0xFFFFFF, 0x808080, 0xC0C0C0};
constexpr std::array<std::uint32_t, 6> greys = {0x333333, 0x505050, 0x696969, 0x828282, 0xBEBEBE, 0xFFFFFF};

// From 10 on the palette is a circle of 24 hues, each in five steps of darkness, pure and half as pure.
std::uint32_t colorOfCircle(std::uint32_t index) {
  constexpr std::array<double, 5> brightness = {1, 0.65, 0.5, 0.3, 0.15};
  const double hue = (index / 10 - 1) * 0.25;  // in sixths of the circle
  const double value = brightness[index % 10 / 2];
  const double purity = index % 2 == 0 ? 1 : 0.5;
  const auto channel = [&](double offset) {
    const double place = std::fmod(offset + hue, 6.0);
    const double part = std::min({place, 4 - place, 1.0});
    return static_cast<std::uint32_t>(255 * value * (1 - purity * std::max(part, 0.0)));
  };
  return channel(5) << 16 | channel(3) << 8 | channel(1);
}

}  // namespace

Ink inkOfIndex(std::uint32_t index) {
  if (index == foreground) return {};
  if (index < firstColors.size()) return inkOfRgb(firstColors[index]);
  if (index < 250) return inkOfRgb(colorOfCircle(index));
  return inkOfRgb(index < 256 ? greys[index - 250] : 0);
}

Ink mixed(const Ink& one, const Ink& other) {
  const auto plain = [](const Ink& ink) { return ink.kind == Ink::Kind::Color ? ink : inkOfRgb(0x808080); };
  const Ink a = plain(one);
  const Ink b = plain(other);
  const auto half = [](int x, int y) { return static_cast<std::uint8_t>((x + y) / 2); };
  return {Ink::Kind::Color, half(a.red, b.red), half(a.green, b.green), half(a.blue, b.blue)};
}

}  // namespace velt::view
