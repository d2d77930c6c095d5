#include "samples/builder/Sections.h"

#include <array>
#include <string_view>

#include "samples/builder/Records.h"

namespace velt::samples {

using dxf::PairWriter;

namespace {

void writeLayout(PairWriter& out, const Parts& parts, const Block& space, std::string_view name,
                 Handle layout, int order) {
  constexpr int modelTypeFlag = 1024;
  constexpr std::array paperLimits{Point{0.0, 0.0}, Point{420.0, 297.0}};
  const bool isModel = order == 0;
  beginObject(out, "LAYOUT", layout, parts.layouts);
  out.verbatim(100, "AcDbPlotSettings");
  out.verbatim(1, "");
  out.verbatim(2, "");
  out.verbatim(4, "");
  out.verbatim(6, "");
  for (const int margin : {40, 41, 42, 43})
    out.real(margin, 0.0);
  out.real(44, paperLimits[1].x);
  out.real(45, paperLimits[1].y);
  for (const int origin : {46, 47, 48, 49, 140, 141})
    out.real(origin, 0.0);
  out.real(142, 1.0);
  out.real(143, 1.0);
  out.integer(70, isModel ? modelTypeFlag : 0);
  out.integer(72, 1);
  out.integer(73, 0);
  out.integer(74, 5);
  out.verbatim(7, "");
  out.integer(75, 16);
  out.real(147, 1.0);
  out.real(148, 0.0);
  out.real(149, 0.0);
  out.verbatim(100, "AcDbLayout");
  out.verbatim(1, name);
  out.integer(70, 1);
  out.integer(71, order);
  out.flatPoint(10, isModel ? parts.low : paperLimits[0]);
  out.flatPoint(11, isModel ? parts.high : paperLimits[1]);
  out.point(12, {});
  out.point(14, isModel ? parts.low : paperLimits[0]);
  out.point(15, isModel ? parts.high : paperLimits[1]);
  out.real(146, 0.0);
  out.point(13, {});
  out.point(16, {1.0, 0.0, 0.0});
  out.point(17, {0.0, 1.0, 0.0});
  out.integer(76, 0);
  out.handle(330, space.record);
}

}  // namespace

void writeObjects(PairWriter& out, const Parts& parts) {
  const auto entry = [&](std::string_view name, Handle handle) {
    out.verbatim(3, name);
    out.handle(350, handle);
  };
  const auto beginDictionary = [&](std::string_view type, Handle handle, Handle owner) {
    beginObject(out, type, handle, owner);
    out.verbatim(100, "AcDbDictionary");
    out.integer(281, 1);
  };
  beginSection(out, "OBJECTS");
  beginDictionary("DICTIONARY", parts.rootDictionary, 0);
  entry("ACAD_GROUP", parts.groups);
  entry("ACAD_LAYOUT", parts.layouts);
  entry("ACAD_PLOTSTYLENAME", parts.plotStyles);
  for (const Dictionary& it : parts.dictionaries)
    entry(it.name, it.handle);
  beginDictionary("DICTIONARY", parts.groups, parts.rootDictionary);
  beginDictionary("DICTIONARY", parts.layouts, parts.rootDictionary);
  entry("Layout1", parts.paperLayout);
  entry("Model", parts.modelLayout);
  beginDictionary("ACDBDICTIONARYWDFLT", parts.plotStyles, parts.rootDictionary);
  entry("Normal", parts.normalPlotStyle);
  out.verbatim(100, "AcDbDictionaryWithDefault");
  out.handle(340, parts.normalPlotStyle);
  beginObject(out, "ACDBPLACEHOLDER", parts.normalPlotStyle, parts.plotStyles);
  for (const Dictionary& dictionary : parts.dictionaries) {
    beginDictionary("DICTIONARY", dictionary.handle, parts.rootDictionary);
    for (const NamedObject& it : dictionary.objects)
      entry(it.name, it.handle);
    for (const NamedObject& it : dictionary.objects) {
      beginObject(out, it.type, it.handle, dictionary.handle);
      write(out, it.pairs);
    }
  }
  writeLayout(out, parts, parts.blocks[0], "Model", parts.modelLayout, 0);
  writeLayout(out, parts, parts.blocks[1], "Layout1", parts.paperLayout, 1);
  endSection(out);
}

}  // namespace velt::samples
