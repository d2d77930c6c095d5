#include "samples/gallery/References.h"

#include "samples/gallery/DimensionCodes.h"
#include "samples/gallery/RawColors.h"

namespace velt::samples {
namespace {

Pairs galleryDimensions(const References& to) {
  using namespace dimensions;
  return {
      {textAround, "<> mm"},
      {overallScale, 2},
      {arrowSize, 2.5},
      {extensionOffset, 0.6},
      {extensionBeyond, 1.25},
      {textHeight, 2.5},
      {centreMark, 2.5},
      {textGap, 0.6},
      {textAbove, 1},
      {hiddenZeros, 8},
      {alternatePrecision, 3},
      {lineColor, 1},
      {extensionColor, 2},
      {textColor, 3},
      {precision, 2},
      {tolerancePrecision, 2},
      {unit, 2},
      {decimalSeparator, ','},
      {textStyle, to.letteringText},
      {lineType, to.dashedLineType},
      {lineWeight, 35},
      {extensionWeight, 18},
  };
}

// Two lines, half a unit to both sides.
Pairs multilineStyle() {
  const auto element = [](double offset) -> Pairs { return {{49, offset}, {62, byLayer}, {6, "BYLAYER"}}; };
  return {
      subclass("AcDbMlineStyle"),
      {2, "STANDARD"},
      {70, 0},
      {3, ""},
      // The filling, and the angles of both ends.
      {62, byLayer},
      {51, 90},
      {52, 90},
      // The lines.
      {71, 2},
      element(0.5),
      element(-0.5),
  };
}

Pairs multiLeaderStyle(const References& to) {
  return {
      subclass("AcDbMLeaderStyle"),
      {179, 2},
      // A text stands at the end.
      {170, 2},
      // What is drawn first.
      {171, 1},
      {172, 0},
      // The line: two points, at any angles, straight; color, line type, weight by block.
      {90, 2},
      {40, 0},
      {41, 0},
      {173, 1},
      {91, rawByBlock},
      {340, to.byBlockLineType},
      {92, -2},
      // The landing with the gap to the text, and the dogleg with its length.
      {290, 1},
      {42, 2},
      {291, 1},
      {43, 8},
      {3, "Plain"},
      // The arrow: the usual one, and its size.
      {341, 0},
      {44, 4},
      // The text: default wording, style, attachment to both sides, angle, alignment, color, height, no frame.
      {300, ""},
      {342, to.standardText},
      {174, 1},
      {178, 1},
      {175, 1},
      {176, 0},
      {93, rawByBlock},
      {45, 4},
      {292, 0},
      {297, 0},
      {46, 4},
      // The block, were it one: which, color, scale, rotation, attachment.
      {343, 0},
      {94, rawByBlock},
      {47, 1},
      {49, 1},
      {140, 1},
      {293, 1},
      {141, 0},
      {294, 1},
      {177, 0},
      // The whole: scale, not annotative, gap where it is broken.
      {142, 1},
      {295, 0},
      {296, 0},
      {143, 3.75},
  };
}

Pairs tableStyle() {
  return {
      subclass("AcDbTableStyle"),
      {280, 0},
      {3, "Plain"},
      {70, 0},
      {71, 0},
      // Margins of the cells.
      {40, 1.5},
      {41, 1.5},
      // Title and header are shown.
      {280, 0},
      {281, 0},
  };
}

Pairs imageDefinition() {
  return {
      subclass("AcDbRasterImageDef"),
      {90, 0},
      {1, "images/facade.png"},
      // How many pixels, and how large one is.
      flatPoint(10, 200, 100),
      flatPoint(11, 0.01, 0.01),
      // It is loaded, and has no unit.
      {280, 1},
      {281, 0},
  };
}

Pairs underlayDefinition() {
  return {
      subclass("AcDbUnderlayDefinition"),
      {1, "survey.pdf"},
      // The page.
      {2, "1"},
  };
}

}  // namespace

References addReferences(DrawingBuilder& drawing) {
  drawing.layer("Exhibits", {.color = 3, .lineWeight = 25});
  drawing.lineType("DASHED", "Dashed __ __ __", {2.5, -1.25});
  drawing.textStyle("Lettering", "arial.ttf");

  BlockBuilder& dot = drawing.block("_Dot");
  dot.circle({0, 0}, 0.25);
  BlockBuilder& part = drawing.block("PART");
  part.circle({0, 0}, 2);
  part.attributeDefinition({.tag = "NUMBER", .value = "1", .at = {0, 3}}, "Number of the part");
  drawing.block("*D1").line({0, 0}, {1, 0});
  BlockBuilder& table = drawing.block("*T1");
  table.line({0, 0}, {30, 0});
  drawing.externalReference("SITE", "site.dxf");

  References to{};
  to.dotBlock = dot.handle();
  to.partBlock = part.handle();
  to.tableBlock = table.handle();
  to.standardText = drawing.textStyleHandle("Standard");
  to.letteringText = drawing.textStyleHandle("Lettering");
  to.byBlockLineType = drawing.lineTypeHandle("ByBlock");
  to.dashedLineType = drawing.lineTypeHandle("DASHED");
  drawing.dimensionStyle("GALLERY", galleryDimensions(to));
  to.multilineStyle = drawing.object("ACAD_MLINESTYLE", "STANDARD", "MLINESTYLE", multilineStyle());
  to.multiLeaderStyle = drawing.object("ACAD_MLEADERSTYLE", "Plain", "MLEADERSTYLE", multiLeaderStyle(to));
  to.tableStyle = drawing.object("ACAD_TABLESTYLE", "Plain", "TABLESTYLE", tableStyle());
  to.imageDefinition = drawing.object("ACAD_IMAGE_DICT", "Facade", "IMAGEDEF", imageDefinition());
  to.underlayDefinition =
      drawing.object("ACAD_PDFDEFINITIONS", "survey - 1", "PDFDEFINITION", underlayDefinition());
  return to;
}

}  // namespace velt::samples
