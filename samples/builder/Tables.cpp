#include "samples/builder/Sections.h"

#include <algorithm>
#include <cmath>

#include "samples/builder/Records.h"

namespace velt::samples {

using dxf::PairWriter;

namespace {

// The pairs that every entry of a table begins with.
void beginEntry(PairWriter& out, std::string_view type, Handle handle, Handle table,
                std::string_view subclass) {
  out.verbatim(0, type);
  out.handle(type == "DIMSTYLE" ? 105 : 5, handle);
  out.handle(330, table);
  out.verbatim(100, "AcDbSymbolTableRecord");
  out.verbatim(100, subclass);
}

void writeView(PairWriter& out, const Parts& parts) {
  const Point size{parts.high.x - parts.low.x, parts.high.y - parts.low.y};
  constexpr double aspect = 1.6;
  beginEntry(out, "VPORT", parts.activeView, parts.table("VPORT"), "AcDbViewportTableRecord");
  out.verbatim(2, "*Active");
  out.integer(70, 0);
  out.flatPoint(10, {});
  out.flatPoint(11, {1.0, 1.0});
  out.flatPoint(12, {parts.low.x + size.x / 2, parts.low.y + size.y / 2});
  out.flatPoint(13, {});
  out.flatPoint(14, {10.0, 10.0});
  out.flatPoint(15, {10.0, 10.0});
  out.point(16, {0.0, 0.0, 1.0});
  out.point(17, {});
  out.real(40, std::max(size.y, size.x / aspect) * 1.05);
  out.real(41, aspect);
  out.real(42, 50.0);
  out.real(43, 0.0);
  out.real(44, 0.0);
  out.real(50, 0.0);
  out.real(51, 0.0);
  out.integer(71, 0);
  out.integer(72, 1000);
  out.integer(73, 1);
  out.integer(74, 3);
  out.integer(75, 0);
  out.integer(76, 0);
  out.integer(77, 0);
  out.integer(78, 0);
}

void writeLineTypes(PairWriter& out, const Parts& parts) {
  for (const LineType& it : parts.lineTypes) {
    double length = 0.0;
    for (const double dash : it.dashes)
      length += std::abs(dash);
    beginEntry(out, "LTYPE", it.handle, parts.table("LTYPE"), "AcDbLinetypeTableRecord");
    out.text(2, it.name);
    out.integer(70, 0);
    out.text(3, it.description);
    out.integer(72, 'A');
    out.integer(73, static_cast<std::int64_t>(it.dashes.size()));
    out.real(40, length);
    for (const double dash : it.dashes) {
      out.real(49, dash);
      out.integer(74, 0);
    }
  }
}

void writeLayers(PairWriter& out, const Parts& parts) {
  constexpr int frozenFlag = 1;
  constexpr int lockedFlag = 4;
  for (const Layer& it : parts.layers) {
    beginEntry(out, "LAYER", it.handle, parts.table("LAYER"), "AcDbLayerTableRecord");
    out.text(2, it.name);
    out.integer(70, (it.style.frozen ? frozenFlag : 0) + (it.style.locked ? lockedFlag : 0));
    out.integer(62, it.style.off ? -it.style.color : it.style.color);
    if (it.style.trueColor) out.integer(420, *it.style.trueColor);
    out.text(6, it.style.lineType);
    out.integer(370, it.style.lineWeight);
    out.handle(390, parts.normalPlotStyle);
  }
}

void writeTextStyles(PairWriter& out, const Parts& parts) {
  for (const Font& it : parts.fonts) {
    beginEntry(out, "STYLE", it.handle, parts.table("STYLE"), "AcDbTextStyleTableRecord");
    out.text(2, it.name);
    out.integer(70, 0);
    out.real(40, 0.0);
    out.real(41, it.widthFactor);
    out.real(50, 0.0);
    out.integer(71, 0);
    out.real(42, 2.5);
    out.text(3, it.file);
    out.verbatim(4, "");
  }
}

void writeDimensionStyles(PairWriter& out, const Parts& parts) {
  beginEntry(out, "DIMSTYLE", parts.standardDimensionStyle, parts.table("DIMSTYLE"),
             "AcDbDimStyleTableRecord");
  out.verbatim(2, "Standard");
  out.integer(70, 0);
  out.handle(340, parts.fonts.front().handle);
  for (const DimensionStyle& it : parts.dimensionStyles) {
    beginEntry(out, "DIMSTYLE", it.handle, parts.table("DIMSTYLE"), "AcDbDimStyleTableRecord");
    out.text(2, it.name);
    out.integer(70, 0);
    write(out, it.variables);
  }
}

void writeBlockRecords(PairWriter& out, const Parts& parts) {
  for (const Block& it : parts.blocks) {
    Handle layout = 0;
    if (it.isModel()) layout = parts.modelLayout;
    if (it.isPaper()) layout = parts.paperLayout;
    beginEntry(out, "BLOCK_RECORD", it.record, parts.table("BLOCK_RECORD"), "AcDbBlockTableRecord");
    out.text(2, it.name);
    out.handle(340, layout);
    out.integer(70, 0);
    out.integer(280, 1);
    out.integer(281, 0);
    if (it.madeOf == 0) continue;
    out.verbatim(1001, dynamicBlockApplication);
    out.integer(1070, 1);
    out.handle(1005, it.madeOf);
  }
}

}  // namespace

void writeTables(PairWriter& out, const Parts& parts) {
  const auto table = [&](std::string_view name, std::size_t entries, const auto& writeEntries) {
    out.verbatim(0, "TABLE");
    out.verbatim(2, name);
    out.handle(5, parts.table(name));
    out.handle(330, 0);
    out.verbatim(100, "AcDbSymbolTable");
    out.integer(70, static_cast<std::int64_t>(entries));
    if (name == "DIMSTYLE") {
      out.verbatim(100, "AcDbDimStyleTable");
      out.integer(71, static_cast<std::int64_t>(entries));
    }
    writeEntries();
    out.verbatim(0, "ENDTAB");
  };
  beginSection(out, "TABLES");
  table("VPORT", 1, [&] { writeView(out, parts); });
  table("LTYPE", parts.lineTypes.size(), [&] { writeLineTypes(out, parts); });
  table("LAYER", parts.layers.size(), [&] { writeLayers(out, parts); });
  table("STYLE", parts.fonts.size(), [&] { writeTextStyles(out, parts); });
  table("VIEW", 0, [] {});
  table("UCS", 0, [] {});
  table("APPID", parts.applications.size(), [&] {
    for (const Application& it : parts.applications) {
      beginEntry(out, "APPID", it.handle, parts.table("APPID"), "AcDbRegAppTableRecord");
      out.text(2, it.name);
      out.integer(70, 0);
    }
  });
  table("DIMSTYLE", 1 + parts.dimensionStyles.size(), [&] { writeDimensionStyles(out, parts); });
  table("BLOCK_RECORD", parts.blocks.size(), [&] { writeBlockRecords(out, parts); });
  endSection(out);
}

}  // namespace velt::samples
