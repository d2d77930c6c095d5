#pragma once

// How entities and layers look, and what is attached to any entity.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "samples/builder/Pairs.h"

namespace velt::samples {

inline constexpr int byBlock = 0;
inline constexpr int byLayer = 256;
inline constexpr int lineWeightByLayer = -1;
inline constexpr int lineWeightDefault = -3;

struct LayerStyle {
  int color = 7;
  // 0xRRGGBB.
  std::optional<std::uint32_t> trueColor{};
  // In hundredths of a millimetre.
  int lineWeight = lineWeightDefault;
  std::string lineType = "Continuous";
  bool off = false;
  bool frozen = false;
  bool locked = false;
};

struct Hyperlink {
  std::string address{};
  std::string description{};
};

// What an application attaches to an entity; it is registered with the drawing.
struct ExtendedData {
  std::string application{};
  // Codes from 1000 on, without the 1001.
  Pairs values{};
};

// What every entity has.
struct EntityStyle {
  std::string layer = "0";
  int color = byLayer;
  // 0xRRGGBB.
  std::optional<std::uint32_t> trueColor{};
  // In hundredths of a millimetre.
  int lineWeight = lineWeightByLayer;
  std::string lineType = "ByLayer";
  double lineTypeScale = 1.0;
  bool visible = true;
  std::optional<Hyperlink> hyperlink{};
  std::vector<ExtendedData> extendedData{};
};

}  // namespace velt::samples
