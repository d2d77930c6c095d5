#include "samples/gallery/Exhibits.h"

namespace velt::samples {
namespace {

// A cell of text. A merged cell takes the place of `columns`, or belongs to such a one and shows nothing.
Pairs cell(std::string_view text, bool isMerged = false, int columns = 1) {
  return {
      // Of text, merged or not, over so many columns and one row.
      {171, 1},
      {172, 0},
      {173, isMerged ? 1 : 0},
      {174, 0},
      {175, columns},
      {176, 1},
      // It overrides nothing, and is not turned.
      {91, 0},
      {178, 0},
      {145, 0},
      {92, 0},
      // The value: its type, itself, its unit and format, and how it is shown.
      {301, "CELL_VALUE"},
      {93, 6},
      {90, 4},
      {1, text},
      {94, 0},
      {300, ""},
      {302, text},
      {304, "ACVALUE_END"},
  };
}

Pairs reference() {
  return {
      subclass("AcDbBlockReference"),
      {2, "SITE"},
      point(10, 150, 40, 0),
      // Scale and rotation.
      {41, 2},
      {42, 2},
      {43, 2},
      {50, 45},
  };
}

Pairs table(const References& to) {
  return {
      subclass("AcDbBlockReference"),
      {2, "*T1"},
      point(10, 160, 50, 0),
      subclass("AcDbTable"),
      {280, 0},
      {342, to.tableStyle},
      {343, to.tableBlock},
      // Its direction.
      point(11, 1, 0, 0),
      {90, 22},
      // Rows and columns.
      {91, 2},
      {92, 2},
      // It overrides nothing of its style: no rows, borders, colors.
      {93, 0},
      {94, 0},
      {95, 0},
      {96, 0},
      // Heights of the rows, and widths of the columns.
      {141, 6},
      {141, 4},
      {142, 20},
      {142, 10},
      cell("Parts", false, 2),
      cell("", true),
      cell("Bolt"),
      cell("12"),
  };
}

}  // namespace

void addSite(Exhibition& gallery) {
  gallery.add("INSERT", reference());
}

// Two rows of two columns. The title goes over both.
void addTable(Exhibition& gallery) {
  gallery.add("ACAD_TABLE", table(gallery.references));
}

}  // namespace velt::samples
