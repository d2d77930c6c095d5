#include "samples/builder/Sections.h"

#include <array>
#include <string_view>

#include "samples/builder/Records.h"

namespace velt::samples {

using dxf::PairWriter;

void writeHeader(PairWriter& out, const Parts& parts) {
  beginSection(out, "HEADER");
  out.verbatim(9, "$ACADVER");
  out.verbatim(1, parts.version == DrawingVersion::AC1018 ? "AC1018" : "AC1027");
  out.verbatim(9, "$DWGCODEPAGE");
  out.verbatim(3, "ANSI_1252");
  out.verbatim(9, "$INSBASE");
  out.point(10, {});
  out.verbatim(9, "$EXTMIN");
  out.point(10, parts.low);
  out.verbatim(9, "$EXTMAX");
  out.point(10, parts.high);
  out.verbatim(9, "$LIMMIN");
  out.flatPoint(10, parts.low);
  out.verbatim(9, "$LIMMAX");
  out.flatPoint(10, parts.high);
  out.verbatim(9, "$TEXTSTYLE");
  out.verbatim(7, "Standard");
  out.verbatim(9, "$CLAYER");
  out.verbatim(8, "0");
  out.verbatim(9, "$CELTYPE");
  out.verbatim(6, "ByLayer");
  out.verbatim(9, "$CECOLOR");
  out.integer(62, byLayer);
  out.verbatim(9, "$MEASUREMENT");
  out.integer(70, 1);
  out.append(parts.variables);
  out.verbatim(9, "$HANDSEED");
  out.handle(5, parts.nextHandle);
  endSection(out);
}

void writeClasses(PairWriter& out) {
  constexpr std::array<std::array<std::string_view, 2>, 3> classes{{
      // clang-format off
      // record                 class
      {"ACDBDICTIONARYWDFLT",  "AcDbDictionaryWithDefault"},
      {"ACDBPLACEHOLDER",      "AcDbPlaceHolder"},
      {"LAYOUT",               "AcDbLayout"},
      // clang-format on
  }};
  beginSection(out, "CLASSES");
  for (const auto& [record, name] : classes) {
    out.verbatim(0, "CLASS");
    out.verbatim(1, record);
    out.verbatim(2, name);
    out.verbatim(3, "Velt");
    out.integer(90, 0);
    out.integer(91, record == "LAYOUT" ? 2 : 1);
    out.integer(280, 0);
    out.integer(281, 0);
  }
  endSection(out);
}

void writeBlocks(PairWriter& out, const Parts& parts) {
  constexpr int anonymousFlag = 1;
  constexpr int attributesFlag = 2;
  constexpr int externalFlags = 4 + 32;
  beginSection(out, "BLOCKS");
  for (const Block& it : parts.blocks) {
    const bool isLayout = it.isModel() || it.isPaper();
    const bool isAnonymous = !isLayout && it.name.starts_with('*');
    beginObject(out, "BLOCK", it.begin, it.record);
    out.verbatim(100, "AcDbEntity");
    if (it.isPaper()) out.integer(67, 1);
    out.verbatim(8, "0");
    out.verbatim(100, "AcDbBlockBegin");
    out.text(2, it.name);
    out.integer(70, (isAnonymous ? anonymousFlag : 0) + (it.hasAttributes ? attributesFlag : 0)
                        + (it.path.empty() ? 0 : externalFlags));
    out.point(10, it.base);
    out.text(3, it.name);
    out.text(1, it.path);
    // What stands in model and paper space follows in a section of its own.
    if (!isLayout) out.append(it.entities);
    beginObject(out, "ENDBLK", it.end, it.record);
    out.verbatim(100, "AcDbEntity");
    if (it.isPaper()) out.integer(67, 1);
    out.verbatim(8, "0");
    out.verbatim(100, "AcDbBlockEnd");
  }
  endSection(out);
}

void writeEntities(PairWriter& out, const Parts& parts) {
  beginSection(out, "ENTITIES");
  for (const Block& it : parts.blocks) {
    if (it.isModel() || it.isPaper()) out.append(it.entities);
  }
  endSection(out);
}

}  // namespace velt::samples
