#pragma once

// The gallery in the making: what all exhibits share, and how one is put up.
//
// An exhibit that the builder has no function for is a list of its pairs, in the order in which drawings write them:
//
//   gallery.add("RAY", {subclass("AcDbRay"), point(10, 50, 20, 0), point(11, 0.6, 0.8, 0.0)});
//
// To add one, write it into the file of its like, or into a new one, and name its function in Exhibits.h and in
// Gallery.cpp. The test of the gallery asks an independent reader whether the drawing is sound.

#include <string_view>

#include "samples/builder/DrawingBuilder.h"

namespace velt::samples {

// Handles of what exhibits refer to.
struct References {
  Handle dotBlock;
  Handle partBlock;
  Handle tableBlock;
  Handle standardText;
  Handle letteringText;
  Handle byBlockLineType;
  Handle dashedLineType;
  Handle multilineStyle;
  Handle multiLeaderStyle;
  Handle tableStyle;
  Handle imageDefinition;
  Handle underlayDefinition;
};

struct Exhibition {
  DrawingBuilder& drawing;
  BlockBuilder& model;
  References references;
  // All exhibits stand on one layer.
  EntityStyle style;

  void add(std::string_view type, const Pairs& pairs) { model.raw(type, pairs, style); }
};

}  // namespace velt::samples
