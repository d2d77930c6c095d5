#include "view/Letters.h"

#include <array>

namespace velt::view {
namespace {

// Thousandths of the font size, of a common plain typeface: from the space to the tilde.
constexpr std::array<int, 95> widths = {
    278, 278, 355, 556, 556, 889, 667,  191, 333, 333, 389, 584, 278, 333, 278, 278,  // space to slash
    556, 556, 556, 556, 556, 556, 556,  556, 556, 556,                                // digits
    278, 278, 584, 584, 584, 556, 1015,                                               // colon to at
    667, 667, 722, 722, 667, 611, 778,  722, 278, 500, 667, 556, 833,                 // A to M
    722, 778, 667, 778, 722, 667, 611,  722, 667, 944, 667, 667, 611,                 // N to Z
    278, 278, 278, 469, 556, 333,                                                     // brackets to grave
    556, 556, 500, 556, 556, 278, 556,  556, 222, 222, 500, 222, 833,                 // a to m
    556, 556, 556, 556, 333, 500, 278,  556, 500, 722, 500, 500, 500,                 // n to z
    334, 260, 334, 584,                                                               // braces to tilde
};
constexpr int usual = 556;
constexpr int ofIdeograph = 1000;

int widthOf(wchar_t letter) {
  constexpr wchar_t firstIdeograph = 0x2E80;
  if (letter >= L' ' && letter <= L'~') return widths[static_cast<std::size_t>(letter - L' ')];
  return letter >= firstIdeograph ? ofIdeograph : usual;
}

}  // namespace

double lengthOf(std::wstring_view text) {
  double total = 0;
  for (const wchar_t letter : text)
    total += widthOf(letter);
  return total / 1000 / capitalHeight;
}

}  // namespace velt::view
