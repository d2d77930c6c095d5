#pragma once

// The wording of multi-line texts with the codes in it, laid out in lines.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "view/Picture.h"

namespace velt::view {

// Of letters.
struct TextFormat {
  // Of capital letters.
  double height = 1;
  double widthFactor = 1;
  // To the right, in radians.
  double oblique = 0;
  std::optional<Ink> ink{};
  std::wstring family{};
  bool isBold = false;
  bool isItalic = false;
  bool isUnderlined = false;
  bool isOverlined = false;
  bool isStruckOut = false;
  // Letters stand for the symbols of tolerances.
  bool hasSymbols = false;

  friend bool operator==(const TextFormat&, const TextFormat&) = default;
};

struct PlacedText {
  std::wstring wording{};
  TextFormat format{};
  // On the baseline: 0, 0 is where the text is attached, x runs along the lines and y upwards.
  Vector2 origin{};
  // See Text.
  double anchor = 0;
  double length = 0;
};

// A stroke within the text, such as that of a fraction.
struct PlacedBar {
  Vector2 from{};
  Vector2 to{};
  std::optional<Ink> ink{};
};

struct LaidOutText {
  std::vector<PlacedText> texts{};
  std::vector<PlacedBar> bars{};
  // Of all lines, in the same coordinates.
  Box box{};
};

struct TextLayout {
  TextFormat format{};
  // Lines that would be longer are broken between words; 0 for no limit.
  double width = 0;
  // Which part of the text lies where it is attached: 0 left or top, 0.5 the middle, 1 right or bottom.
  double across = 0;
  double down = 0;
  // How far lines are from each other, in multiples of the usual distance.
  double spacing = 1;
};

[[nodiscard]] LaidOutText layOut(std::wstring_view codes, const TextLayout& layout);

}  // namespace velt::view
