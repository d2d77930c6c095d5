#include "samples/gallery/DimensionCodes.h"
#include "samples/gallery/Exhibits.h"
#include "samples/gallery/RawColors.h"

namespace velt::samples {
namespace {

// --- multileaders: the content with its leaders, and after it what the leader sets of its style ---

// What stands at the end of a multileader.
struct Content {
  // 1: a block, 2: a text.
  int kind;
  // Where the content begins.
  Pairs base;
  // How a text stands to the landing.
  int textAlignment;
  // Of the text or of the block.
  Pairs pairs;
};

Pairs contentOfText(const References& to) {
  return {
      {290, 1},
      {304, "Leading here"},
      point(11, 0, 0, 1),
      {340, to.standardText},
      // Place, direction, rotation.
      point(12, 61, 49, 0),
      point(13, 1, 0, 0),
      {42, 0},
      // The box and the distance of its lines.
      {43, 0},
      {44, 0},
      {45, 1},
      {170, 1},
      {90, rawByBlock},
      // Alignment, and direction in which it flows.
      {171, 1},
      {172, 5},
      // The background: color, margin, transparency; not shown.
      {91, rawNone},
      {141, 1.5},
      {92, 0},
      {291, 0},
      {292, 0},
      // Columns: none.
      {173, 0},
      {293, 0},
      {142, 0},
      {143, 0},
      {294, 0},
      {295, 0},
      // No block.
      {296, 0},
  };
}

Pairs contentOfBlock(const References& to) {
  return {
      // No text.
      {290, 0},
      {296, 1},
      {341, to.partBlock},
      point(14, 0, 0, 1),
      // Place, scale, rotation, color.
      point(15, 92, 48, 0),
      point(16, 1, 1, 1),
      {46, 0},
      {93, rawByBlock},
      // The same as a matrix, row by row.
      each(47, {1, 0, 0, 92}),
      each(47, {0, 1, 0, 48}),
      each(47, {0, 0, 1, 0}),
      each(47, {0, 0, 0, 1}),
  };
}

// A leader of one line that comes by the given points; where it lands, and the dogleg of length 2 to the right.
Pairs leaderThrough(const Pairs& line, const Pairs& landing) {
  return {
      {302, "LEADER{"},      {290, 1}, {291, 1}, landing,    point(11, 1, 0, 0), {90, 0}, {40, 2},
      {304, "LEADER_LINE{"}, line,     {91, 0},  {305, "}"}, {303, "}"},
  };
}

Pairs contextOf(const Content& content, const Pairs& leader) {
  return {
      {300, "CONTEXT_DATA{"},
      {40, 1},
      content.base,
      // Sizes of the text, of the arrow, and of the gap at the landing.
      {41, 2.5},
      {140, 3},
      {145, 1},
      // Attachment of a text to the left and to the right, its alignment, attachment of a block.
      {174, 1},
      {175, 1},
      {176, content.textAlignment},
      {177, 0},
      content.pairs,
      // The plane: origin and both directions.
      point(110, 0, 0, 0),
      point(111, 1, 0, 0),
      point(112, 0, 1, 0),
      {297, 0},
      leader,
      {301, "}"},
  };
}

// How the leaders of a multileader look where that differs from one to the other.
struct LeaderLook {
  int color;
  int lineWeight;
  // Where it is not the usual one.
  Pairs arrow;
  // Of the content, where it is one.
  Pairs block;
};

Pairs multiLeader(const References& to, const Content& content, const Pairs& leader, const LeaderLook& look) {
  return {
      subclass("AcDbMLeader"),
      {270, 2},
      contextOf(content, leader),
      {340, to.multiLeaderStyle},
      // Nothing is marked as overridden.
      {90, 0},
      // The line: straight; color, line type, weight.
      {170, 1},
      {91, look.color},
      {341, to.byBlockLineType},
      {171, look.lineWeight},
      // Landing and dogleg, its length.
      {290, 1},
      {291, 1},
      {41, 2},
      look.arrow,
      {42, 3},
      {172, content.kind},
      // The text: style, attachment to both sides, angle, alignment, color, no frame.
      {343, to.standardText},
      {173, 1},
      {95, 1},
      {174, 1},
      {175, 0},
      {92, rawByBlock},
      {292, 0},
      // The block: which, color, scale, rotation, attachment.
      look.block,
      {93, rawByBlock},
      point(10, 1, 1, 1),
      {43, 0},
      {176, 0},
      // Not annotative; the direction and justification of texts, scale.
      {293, 0},
      {294, 0},
      {178, 0},
      {179, 1},
      {45, 1},
      // Attachment: horizontal; above and below, were it vertical.
      {271, 0},
      {272, 9},
      {273, 9},
  };
}

Pairs leadingToText(const References& to) {
  constexpr int weightByBlock = -2;
  const Content content{
      .kind = 2, .base = point(10, 60, 48, 0), .textAlignment = 2, .pairs = contentOfText(to)};
  const Pairs leader = leaderThrough({point(10, 50, 40, 0), point(10, 54, 46, 0)}, point(10, 58, 48, 0));
  return multiLeader(to, content, leader,
                     {.color = rawByBlock, .lineWeight = weightByBlock, .arrow = {}, .block = {}});
}

Pairs leadingToBlock(const References& to) {
  const Content content{
      .kind = 1, .base = point(10, 90, 48, 0), .textAlignment = 1, .pairs = contentOfBlock(to)};
  const Pairs leader = leaderThrough(point(10, 80, 40, 0), point(10, 88, 48, 0));
  return multiLeader(
      to, content, leader,
      {.color = rawColor(5), .lineWeight = 25, .arrow = {342, to.dotBlock}, .block = {344, to.partBlock}});
}

// --- the others ---

Pairs shape() {
  return {
      subclass("AcDbShape"),
      point(10, 130, 20, 0),
      // Size, which one, rotation, how wide.
      {40, 3},
      {2, "SIGN"},
      {50, 30},
      {41, 1.5},
  };
}

Pairs leader(const References& to) {
  return {
      subclass("AcDbLeader"),
      {3, "GALLERY"},
      // An arrow, straight lines, no annotation.
      {71, 1},
      {72, 0},
      {73, 3},
      {74, 0},
      {75, 0},
      {40, 2.5},
      {41, 10},
      // Corners.
      {76, 3},
      point(10, 0, 40, 0),
      point(10, 5, 48, 0),
      point(10, 12, 48, 0),
      dimensions::overrides({
          dimensions::overridingHandle(dimensions::leaderArrow, to.dotBlock),
          dimensions::overridingReal(dimensions::arrowSize, 4),
      }),
  };
}

Pairs tolerance() {
  return {
      subclass("AcDbFcf"),
      {3, "GALLERY"},
      point(10, 20, 40, 0),
      // The symbol of a position, and one value.
      {1, "{\\Fgdt;j}%%v0.1%%v%%v%%v%%v"},
      point(11, 1, 0, 0),
  };
}

}  // namespace

void addNotes(Exhibition& gallery) {
  gallery.add("SHAPE", shape());
  gallery.add("LEADER", leader(gallery.references));
  gallery.add("TOLERANCE", tolerance());
  gallery.add("MULTILEADER", leadingToText(gallery.references));
  gallery.add("MULTILEADER", leadingToBlock(gallery.references));
}

}  // namespace velt::samples
