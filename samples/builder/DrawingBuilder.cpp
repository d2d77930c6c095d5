#include "samples/builder/DrawingBuilder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

namespace velt::samples {
namespace {

constexpr std::string_view modelSpace = "*Model_Space";
constexpr std::string_view paperSpace = "*Paper_Space";
constexpr std::string_view hyperlinkApplication = "PE_URL";
constexpr std::string_view dynamicBlockApplication = "AcDbBlockRepBTag";
constexpr std::size_t longestChunk = 250;

constexpr std::array<std::string_view, 9> tableNames{"VPORT", "LTYPE", "LAYER",    "STYLE",       "VIEW",
                                                     "UCS",   "APPID", "DIMSTYLE", "BLOCK_RECORD"};

double radians(double degrees) {
  return degrees * std::numbers::pi / 180.0;
}

Point turned(const Point& at, double degrees) {
  const double cosine = std::cos(radians(degrees));
  const double sine = std::sin(radians(degrees));
  return {at.x * cosine - at.y * sine, at.x * sine + at.y * cosine, at.z};
}

// The text in the drawing's encoding, cut into chunks between characters.
std::vector<std::string> chunksOf(std::string_view utf8, const Encoding& encoding) {
  std::vector<std::string> chunks(1);
  for (const wchar_t character : Encoding::utf8().decode(utf8)) {
    const std::string bytes = encoding.encode({&character, 1});
    if (chunks.back().size() + bytes.size() > longestChunk) chunks.emplace_back();
    chunks.back() += bytes;
  }
  return chunks;
}

void beginSection(PairWriter& out, std::string_view name) {
  out.verbatim(0, "SECTION");
  out.verbatim(2, name);
}

void endSection(PairWriter& out) {
  out.verbatim(0, "ENDSEC");
}

// The pairs that every entry of a table begins with.
void beginEntry(PairWriter& out, std::string_view type, Handle handle, Handle table,
                std::string_view subclass) {
  out.verbatim(0, type);
  out.handle(type == "DIMSTYLE" ? 105 : 5, handle);
  out.handle(330, table);
  out.verbatim(100, "AcDbSymbolTableRecord");
  out.verbatim(100, subclass);
}

void beginObject(PairWriter& out, std::string_view type, Handle handle, Handle owner) {
  out.verbatim(0, type);
  out.handle(5, handle);
  out.handle(330, owner);
}

// The pairs shared by texts, attributes and their definitions; the alignment point decides unless all is at the left.
void writeTextShape(PairWriter& out, const Point& at, std::string_view wording, const TextStyle& shape) {
  out.verbatim(100, "AcDbText");
  out.point(10, at);
  out.real(40, shape.height);
  out.text(1, wording);
  if (shape.rotation != 0.0) out.real(50, shape.rotation);
  if (shape.widthFactor != 1.0) out.real(41, shape.widthFactor);
  out.text(7, shape.style);
  if (shape.align == Align::Left && shape.alignVertical == AlignVertical::Baseline) return;
  out.integer(72, static_cast<int>(shape.align));
  out.point(11, at);
}

}  // namespace

// --- entities ---------------------------------------------------------------------------------------------------------

BlockBuilder::BlockBuilder(DrawingBuilder& drawing, std::string name, Point base)
    : drawing_(drawing),
      name_(std::move(name)),
      base_(base),
      recordHandle_(drawing.newHandle()),
      beginHandle_(drawing.newHandle()),
      endHandle_(drawing.newHandle()),
      entities_(drawing.encoding_) {}

Handle BlockBuilder::begin(std::string_view type, const EntityStyle& style, std::optional<Handle> owner) {
  const Handle handle = drawing_.newHandle();
  beginObject(entities_, type, handle, owner.value_or(recordHandle_));
  entities_.verbatim(100, "AcDbEntity");
  if (name_ == paperSpace) entities_.integer(67, 1);
  entities_.text(8, style.layer);
  if (style.lineType != "ByLayer") entities_.text(6, style.lineType);
  if (style.color != byLayer) entities_.integer(62, style.color);
  if (style.lineWeight != lineWeightByLayer) entities_.integer(370, style.lineWeight);
  if (style.lineTypeScale != 1.0) entities_.real(48, style.lineTypeScale);
  if (!style.visible) entities_.integer(60, 1);
  if (style.trueColor) entities_.integer(420, *style.trueColor);
  return handle;
}

void BlockBuilder::end(const EntityStyle& style) {
  for (const ExtendedData& data : style.extendedData) {
    drawing_.application(data.application);
    entities_.text(1001, data.application);
    for (const RawPair& value : data.values)
      entities_.verbatim(value.code, value.value);
  }
  if (!style.hyperlink) return;
  drawing_.application(hyperlinkApplication);
  entities_.verbatim(1001, hyperlinkApplication);
  entities_.text(1000, style.hyperlink->address);
  entities_.verbatim(1002, "{");
  entities_.text(1000, style.hyperlink->description);
  entities_.verbatim(1002, "}");
}

void BlockBuilder::isMadeOf(const BlockBuilder& definition) {
  madeOf_ = definition.recordHandle_;
  drawing_.application(dynamicBlockApplication);
}

Handle BlockBuilder::line(const Point& from, const Point& to, const EntityStyle& style) {
  const Handle handle = begin("LINE", style);
  entities_.verbatim(100, "AcDbLine");
  entities_.point(10, from);
  entities_.point(11, to);
  end(style);
  return handle;
}

Handle BlockBuilder::point(const Point& at, const EntityStyle& style) {
  const Handle handle = begin("POINT", style);
  entities_.verbatim(100, "AcDbPoint");
  entities_.point(10, at);
  end(style);
  return handle;
}

Handle BlockBuilder::circle(const Point& centre, double radius, const EntityStyle& style) {
  const Handle handle = begin("CIRCLE", style);
  entities_.verbatim(100, "AcDbCircle");
  entities_.point(10, centre);
  entities_.real(40, radius);
  end(style);
  return handle;
}

Handle BlockBuilder::arc(const Point& centre, double radius, double startAngle, double endAngle,
                         const EntityStyle& style) {
  const Handle handle = begin("ARC", style);
  entities_.verbatim(100, "AcDbCircle");
  entities_.point(10, centre);
  entities_.real(40, radius);
  entities_.verbatim(100, "AcDbArc");
  entities_.real(50, startAngle);
  entities_.real(51, endAngle);
  end(style);
  return handle;
}

Handle BlockBuilder::ellipse(const Point& centre, const Point& major, double ratio, const EntityStyle& style,
                             double startAngle, double endAngle) {
  const Handle handle = begin("ELLIPSE", style);
  entities_.verbatim(100, "AcDbEllipse");
  entities_.point(10, centre);
  entities_.point(11, major);
  entities_.point(210, {0.0, 0.0, 1.0});
  entities_.real(40, ratio);
  entities_.real(41, radians(startAngle));
  entities_.real(42, radians(endAngle));
  end(style);
  return handle;
}

Handle BlockBuilder::polyline(const Outline& outline, const PolylineStyle& shape, const EntityStyle& style) {
  const Handle handle = begin("LWPOLYLINE", style);
  entities_.verbatim(100, "AcDbPolyline");
  entities_.integer(90, static_cast<std::int64_t>(outline.size()));
  entities_.integer(70, shape.closed ? 1 : 0);
  if (shape.elevation != 0.0) entities_.real(38, shape.elevation);
  for (const Vertex& vertex : outline) {
    entities_.flatPoint(10, {vertex.x, vertex.y});
    if (vertex.startWidth != 0.0 || vertex.endWidth != 0.0) {
      entities_.real(40, vertex.startWidth);
      entities_.real(41, vertex.endWidth);
    }
    if (vertex.bulge != 0.0) entities_.real(42, vertex.bulge);
  }
  end(style);
  return handle;
}

Handle BlockBuilder::text(const Point& at, std::string_view wording, const TextStyle& shape,
                          const EntityStyle& style) {
  const Handle handle = begin("TEXT", style);
  writeTextShape(entities_, at, wording, shape);
  entities_.verbatim(100, "AcDbText");
  if (shape.alignVertical != AlignVertical::Baseline) {
    entities_.integer(73, static_cast<int>(shape.alignVertical));
  }
  end(style);
  return handle;
}

Handle BlockBuilder::mtext(const Point& at, std::string_view wording, const MTextStyle& shape,
                           const EntityStyle& style) {
  const Handle handle = begin("MTEXT", style);
  entities_.verbatim(100, "AcDbMText");
  entities_.point(10, at);
  entities_.real(40, shape.height);
  entities_.real(41, shape.width);
  entities_.integer(71, shape.attachment);
  entities_.integer(72, 1);
  const std::vector<std::string> chunks = chunksOf(wording, drawing_.encoding_);
  for (std::size_t i = 0; i < chunks.size(); ++i)
    entities_.verbatim(i + 1 == chunks.size() ? 1 : 3, chunks[i]);
  entities_.text(7, shape.style);
  if (shape.rotation != 0.0) entities_.point(11, turned({1.0, 0.0}, shape.rotation));
  entities_.integer(73, 1);
  entities_.real(44, 1.0);
  end(style);
  return handle;
}

Handle BlockBuilder::insert(std::string_view block, const Placement& placement, const EntityStyle& style) {
  const Handle handle = begin("INSERT", style);
  entities_.verbatim(100, "AcDbBlockReference");
  if (!placement.attributes.empty()) entities_.integer(66, 1);
  entities_.text(2, block);
  entities_.point(10, placement.at);
  if (placement.scaleX != 1.0) entities_.real(41, placement.scaleX);
  if (placement.scaleY != 1.0) entities_.real(42, placement.scaleY);
  if (placement.scaleZ != 1.0) entities_.real(43, placement.scaleZ);
  if (placement.rotation != 0.0) entities_.real(50, placement.rotation);
  end(style);
  if (placement.attributes.empty()) return handle;

  const EntityStyle plain{.layer = style.layer};
  for (const Attribute& attribute : placement.attributes) {
    writeAttribute(attribute, plain, handle);
  }
  begin("SEQEND", plain, handle);
  return handle;
}

void BlockBuilder::writeAttribute(const Attribute& attribute, const EntityStyle& style, Handle owner) {
  begin("ATTRIB", style, owner);
  writeTextShape(entities_, attribute.at, attribute.value,
                 {.height = attribute.height, .align = attribute.align});
  entities_.verbatim(100, "AcDbAttribute");
  entities_.text(2, attribute.tag);
  entities_.integer(70, attribute.visible ? 0 : 1);
}

Handle BlockBuilder::attributeDefinition(const Attribute& attribute, std::string_view prompt,
                                         const EntityStyle& style) {
  hasAttributes_ = true;
  const Handle handle = begin("ATTDEF", style);
  writeTextShape(entities_, attribute.at, attribute.value,
                 {.height = attribute.height, .align = attribute.align});
  entities_.verbatim(100, "AcDbAttributeDefinition");
  entities_.text(3, prompt);
  entities_.text(2, attribute.tag);
  entities_.integer(70, attribute.visible ? 0 : 1);
  end(style);
  return handle;
}

Handle BlockBuilder::beginHatch(std::span<const Outline> boundary, std::string_view pattern, bool isSolid,
                                const EntityStyle& style) {
  constexpr int externalPolyline = 1 | 2;
  const Handle handle = begin("HATCH", style);
  entities_.verbatim(100, "AcDbHatch");
  entities_.point(10, {});
  entities_.point(210, {0.0, 0.0, 1.0});
  entities_.text(2, pattern);
  entities_.integer(70, isSolid ? 1 : 0);
  entities_.integer(71, 0);
  entities_.integer(91, static_cast<std::int64_t>(boundary.size()));
  for (const Outline& outline : boundary) {
    const bool hasBulges =
        std::any_of(outline.begin(), outline.end(), [](const Vertex& v) { return v.bulge != 0.0; });
    entities_.integer(92, externalPolyline);
    entities_.integer(72, hasBulges ? 1 : 0);
    entities_.integer(73, 1);
    entities_.integer(93, static_cast<std::int64_t>(outline.size()));
    for (const Vertex& vertex : outline) {
      entities_.flatPoint(10, {vertex.x, vertex.y});
      if (hasBulges) entities_.real(42, vertex.bulge);
    }
    entities_.integer(97, 0);
  }
  entities_.integer(75, 0);
  entities_.integer(76, 1);
  return handle;
}

void BlockBuilder::endHatch(const EntityStyle& style) {
  entities_.integer(98, 0);
  end(style);
}

Handle BlockBuilder::solidHatch(std::span<const Outline> boundary, const EntityStyle& style) {
  const Handle handle = beginHatch(boundary, "SOLID", true, style);
  endHatch(style);
  return handle;
}

Handle BlockBuilder::patternHatch(std::span<const Outline> boundary, const HatchPattern& pattern,
                                  const EntityStyle& style) {
  const Handle handle = beginHatch(boundary, pattern.name, false, style);
  entities_.real(52, pattern.angle);
  entities_.real(41, pattern.scale);
  entities_.integer(77, 0);
  entities_.integer(78, static_cast<std::int64_t>(pattern.lines.size()));
  for (const PatternLine& line : pattern.lines) {
    // The file holds the lines as they come to lie in the drawing.
    const double angle = line.angle + pattern.angle;
    const Point base = turned({line.base.x * pattern.scale, line.base.y * pattern.scale}, pattern.angle);
    const Point offset = turned({line.offset.x * pattern.scale, line.offset.y * pattern.scale}, angle);
    entities_.real(53, angle);
    entities_.real(43, base.x);
    entities_.real(44, base.y);
    entities_.real(45, offset.x);
    entities_.real(46, offset.y);
    entities_.integer(79, static_cast<std::int64_t>(line.dashes.size()));
    for (const double dash : line.dashes)
      entities_.real(49, dash * pattern.scale);
  }
  endHatch(style);
  return handle;
}

Handle BlockBuilder::gradientHatch(std::span<const Outline> boundary, const HatchGradient& gradient,
                                   const EntityStyle& style) {
  const Handle handle = beginHatch(boundary, "SOLID", true, style);
  entities_.integer(98, 0);
  entities_.integer(450, 1);
  entities_.integer(451, 0);
  entities_.real(460, radians(gradient.angle));
  entities_.real(461, 0.0);
  entities_.integer(452, 0);
  entities_.real(462, 0.0);
  entities_.integer(453, 2);
  entities_.real(463, 0.0);
  entities_.integer(63, 5);
  entities_.integer(421, gradient.firstColor);
  entities_.real(463, 1.0);
  entities_.integer(63, 7);
  entities_.integer(421, gradient.secondColor);
  entities_.text(470, gradient.name);
  end(style);
  return handle;
}

Handle BlockBuilder::raw(std::string_view type, std::span<const RawPair> pairs, const EntityStyle& style,
                         std::optional<Handle> owner) {
  const Handle handle = begin(type, style, owner);
  for (const RawPair& pair : pairs)
    entities_.verbatim(pair.code, pair.value);
  end(style);
  return handle;
}

// --- the drawing around them --------------------------------------------------------------------------------------------

DrawingBuilder::DrawingBuilder(DrawingVersion version)
    : version_(version),
      encoding_(version == DrawingVersion::AC1018 ? Encoding::ofCodePage("ANSI_1252") : Encoding::utf8()),
      rootDictionary_(newHandle()),
      groups_(newHandle()),
      layouts_(newHandle()),
      plotStyles_(newHandle()),
      normalPlotStyle_(newHandle()),
      modelLayout_(newHandle()),
      paperLayout_(newHandle()),
      activeView_(newHandle()),
      dimensionStyle_(newHandle()),
      variables_(encoding_) {
  for (const std::string_view table : tableNames)
    tables_.emplace(table, newHandle());
  blocks_.emplace_back(*this, std::string(modelSpace), Point{});
  blocks_.emplace_back(*this, std::string(paperSpace), Point{});
  lineType("ByBlock", "", {});
  lineType("ByLayer", "", {});
  lineType("Continuous", "Solid line", {});
  layer("0");
  textStyle("Standard", "txt");
  application("ACAD");
}

void DrawingBuilder::layer(std::string_view name, const LayerStyle& style) {
  layers_.push_back({std::string(name), style, newHandle()});
}

void DrawingBuilder::lineType(std::string_view name, std::string_view description,
                              std::vector<double> dashes) {
  lineTypes_.push_back({std::string(name), std::string(description), std::move(dashes), newHandle()});
}

void DrawingBuilder::textStyle(std::string_view name, std::string_view font, double widthFactor) {
  fonts_.push_back({std::string(name), std::string(font), widthFactor, newHandle()});
}

Handle DrawingBuilder::dimensionStyle(std::string_view name, std::span<const RawPair> variables) {
  dimensionStyles_.push_back({std::string(name), {variables.begin(), variables.end()}, newHandle()});
  return dimensionStyles_.back().handle;
}

Handle DrawingBuilder::textStyleHandle(std::string_view name) const {
  return std::find_if(fonts_.begin(), fonts_.end(), [&](const Font& it) { return it.name == name; })->handle;
}

Handle DrawingBuilder::lineTypeHandle(std::string_view name) const {
  return std::find_if(lineTypes_.begin(), lineTypes_.end(),
                      [&](const LineType& it) { return it.name == name; })
      ->handle;
}

Handle DrawingBuilder::object(std::string_view dictionary, std::string_view name, std::string_view type,
                              std::span<const RawPair> pairs) {
  auto holder = std::find_if(dictionaries_.begin(), dictionaries_.end(),
                             [&](const Dictionary& it) { return it.name == dictionary; });
  if (holder == dictionaries_.end()) {
    holder = dictionaries_.insert(holder, {std::string(dictionary), newHandle(), {}});
  }
  holder->objects.push_back(
      {std::string(name), std::string(type), {pairs.begin(), pairs.end()}, newHandle()});
  return holder->objects.back().handle;
}

void DrawingBuilder::externalReference(std::string_view name, std::string_view path) {
  block(name).path_ = path;
}

void DrawingBuilder::application(std::string_view name) {
  const bool isKnown = std::any_of(applications_.begin(), applications_.end(),
                                   [&](const Application& it) { return it.name == name; });
  if (!isKnown) applications_.push_back({std::string(name), newHandle()});
}

void DrawingBuilder::variable(std::string_view name, std::initializer_list<RawPair> pairs) {
  variables_.verbatim(9, name);
  for (const RawPair& pair : pairs)
    variables_.verbatim(pair.code, pair.value);
}

void DrawingBuilder::extents(const Point& low, const Point& high) {
  low_ = low;
  high_ = high;
}

BlockBuilder& DrawingBuilder::block(std::string_view name, const Point& base) {
  for (BlockBuilder& known : blocks_) {
    if (known.name_ == name) return known;
  }
  return blocks_.emplace_back(*this, std::string(name), base);
}

std::string DrawingBuilder::bytes() const {
  PairWriter out(encoding_);
  writeHeader(out);
  writeClasses(out);
  writeTables(out);
  writeBlocks(out);
  beginSection(out, "ENTITIES");
  out.append(blocks_[0].entities_);
  out.append(blocks_[1].entities_);
  endSection(out);
  writeObjects(out);
  out.verbatim(0, "EOF");
  return out.bytes();
}

void DrawingBuilder::writeHeader(PairWriter& out) const {
  beginSection(out, "HEADER");
  out.verbatim(9, "$ACADVER");
  out.verbatim(1, version_ == DrawingVersion::AC1018 ? "AC1018" : "AC1027");
  out.verbatim(9, "$DWGCODEPAGE");
  out.verbatim(3, "ANSI_1252");
  out.verbatim(9, "$INSBASE");
  out.point(10, {});
  out.verbatim(9, "$EXTMIN");
  out.point(10, low_);
  out.verbatim(9, "$EXTMAX");
  out.point(10, high_);
  out.verbatim(9, "$LIMMIN");
  out.flatPoint(10, low_);
  out.verbatim(9, "$LIMMAX");
  out.flatPoint(10, high_);
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
  out.append(variables_);
  out.verbatim(9, "$HANDSEED");
  out.handle(5, nextHandle_);
  endSection(out);
}

void DrawingBuilder::writeClasses(PairWriter& out) {
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
    out.verbatim(3, "ObjectDBX Classes");
    out.integer(90, 0);
    out.integer(91, record == "LAYOUT" ? 2 : 1);
    out.integer(280, 0);
    out.integer(281, 0);
  }
  endSection(out);
}

void DrawingBuilder::writeTables(PairWriter& out) const {
  const auto table = [&](std::string_view name, std::size_t entries, const auto& writeEntries) {
    out.verbatim(0, "TABLE");
    out.verbatim(2, name);
    out.handle(5, tableHandle(name));
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
  table("VPORT", 1, [&] { writeView(out); });
  table("LTYPE", lineTypes_.size(), [&] { writeLineTypes(out); });
  table("LAYER", layers_.size(), [&] { writeLayers(out); });
  table("STYLE", fonts_.size(), [&] { writeTextStyles(out); });
  table("VIEW", 0, [] {});
  table("UCS", 0, [] {});
  table("APPID", applications_.size(), [&] {
    for (const Application& it : applications_) {
      beginEntry(out, "APPID", it.handle, tableHandle("APPID"), "AcDbRegAppTableRecord");
      out.text(2, it.name);
      out.integer(70, 0);
    }
  });
  table("DIMSTYLE", 1 + dimensionStyles_.size(), [&] { writeDimensionStyles(out); });
  table("BLOCK_RECORD", blocks_.size(), [&] { writeBlockRecords(out); });
  endSection(out);
}

void DrawingBuilder::writeView(PairWriter& out) const {
  const Point size{high_.x - low_.x, high_.y - low_.y};
  constexpr double aspect = 1.6;
  beginEntry(out, "VPORT", activeView_, tableHandle("VPORT"), "AcDbViewportTableRecord");
  out.verbatim(2, "*Active");
  out.integer(70, 0);
  out.flatPoint(10, {});
  out.flatPoint(11, {1.0, 1.0});
  out.flatPoint(12, {low_.x + size.x / 2, low_.y + size.y / 2});
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

void DrawingBuilder::writeLineTypes(PairWriter& out) const {
  for (const LineType& it : lineTypes_) {
    double length = 0.0;
    for (const double dash : it.dashes)
      length += std::abs(dash);
    beginEntry(out, "LTYPE", it.handle, tableHandle("LTYPE"), "AcDbLinetypeTableRecord");
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

void DrawingBuilder::writeLayers(PairWriter& out) const {
  constexpr int frozenFlag = 1;
  constexpr int lockedFlag = 4;
  for (const Layer& it : layers_) {
    beginEntry(out, "LAYER", it.handle, tableHandle("LAYER"), "AcDbLayerTableRecord");
    out.text(2, it.name);
    out.integer(70, (it.style.frozen ? frozenFlag : 0) + (it.style.locked ? lockedFlag : 0));
    out.integer(62, it.style.off ? -it.style.color : it.style.color);
    if (it.style.trueColor) out.integer(420, *it.style.trueColor);
    out.text(6, it.style.lineType);
    out.integer(370, it.style.lineWeight);
    out.handle(390, normalPlotStyle_);
  }
}

void DrawingBuilder::writeTextStyles(PairWriter& out) const {
  for (const Font& it : fonts_) {
    beginEntry(out, "STYLE", it.handle, tableHandle("STYLE"), "AcDbTextStyleTableRecord");
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

void DrawingBuilder::writeDimensionStyles(PairWriter& out) const {
  beginEntry(out, "DIMSTYLE", dimensionStyle_, tableHandle("DIMSTYLE"), "AcDbDimStyleTableRecord");
  out.verbatim(2, "Standard");
  out.integer(70, 0);
  out.handle(340, fonts_.front().handle);
  for (const DimensionStyle& it : dimensionStyles_) {
    beginEntry(out, "DIMSTYLE", it.handle, tableHandle("DIMSTYLE"), "AcDbDimStyleTableRecord");
    out.text(2, it.name);
    out.integer(70, 0);
    for (const RawPair& pair : it.variables)
      out.verbatim(pair.code, pair.value);
  }
}

void DrawingBuilder::writeBlockRecords(PairWriter& out) const {
  for (const BlockBuilder& it : blocks_) {
    Handle layout = 0;
    if (it.name_ == modelSpace) layout = modelLayout_;
    if (it.name_ == paperSpace) layout = paperLayout_;
    beginEntry(out, "BLOCK_RECORD", it.recordHandle_, tableHandle("BLOCK_RECORD"), "AcDbBlockTableRecord");
    out.text(2, it.name_);
    out.handle(340, layout);
    out.integer(70, 0);
    out.integer(280, 1);
    out.integer(281, 0);
    if (it.madeOf_ == 0) continue;
    out.verbatim(1001, dynamicBlockApplication);
    out.integer(1070, 1);
    out.handle(1005, it.madeOf_);
  }
}

void DrawingBuilder::writeBlocks(PairWriter& out) const {
  constexpr int anonymousFlag = 1;
  constexpr int attributesFlag = 2;
  constexpr int externalFlags = 4 + 32;
  beginSection(out, "BLOCKS");
  for (const BlockBuilder& it : blocks_) {
    const bool isLayout = it.name_ == modelSpace || it.name_ == paperSpace;
    const bool isAnonymous = !isLayout && it.name_.starts_with('*');
    beginObject(out, "BLOCK", it.beginHandle_, it.recordHandle_);
    out.verbatim(100, "AcDbEntity");
    if (it.name_ == paperSpace) out.integer(67, 1);
    out.verbatim(8, "0");
    out.verbatim(100, "AcDbBlockBegin");
    out.text(2, it.name_);
    out.integer(70, (isAnonymous ? anonymousFlag : 0) + (it.hasAttributes_ ? attributesFlag : 0)
                        + (it.path_.empty() ? 0 : externalFlags));
    out.point(10, it.base_);
    out.text(3, it.name_);
    out.text(1, it.path_);
    // What stands in model and paper space follows in a section of its own.
    if (!isLayout) out.append(it.entities_);
    beginObject(out, "ENDBLK", it.endHandle_, it.recordHandle_);
    out.verbatim(100, "AcDbEntity");
    if (it.name_ == paperSpace) out.integer(67, 1);
    out.verbatim(8, "0");
    out.verbatim(100, "AcDbBlockEnd");
  }
  endSection(out);
}

void DrawingBuilder::writeObjects(PairWriter& out) const {
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
  beginDictionary("DICTIONARY", rootDictionary_, 0);
  entry("ACAD_GROUP", groups_);
  entry("ACAD_LAYOUT", layouts_);
  entry("ACAD_PLOTSTYLENAME", plotStyles_);
  for (const Dictionary& it : dictionaries_)
    entry(it.name, it.handle);
  beginDictionary("DICTIONARY", groups_, rootDictionary_);
  beginDictionary("DICTIONARY", layouts_, rootDictionary_);
  entry("Layout1", paperLayout_);
  entry("Model", modelLayout_);
  beginDictionary("ACDBDICTIONARYWDFLT", plotStyles_, rootDictionary_);
  entry("Normal", normalPlotStyle_);
  out.verbatim(100, "AcDbDictionaryWithDefault");
  out.handle(340, normalPlotStyle_);
  beginObject(out, "ACDBPLACEHOLDER", normalPlotStyle_, plotStyles_);
  for (const Dictionary& dictionary : dictionaries_) {
    beginDictionary("DICTIONARY", dictionary.handle, rootDictionary_);
    for (const NamedObject& it : dictionary.objects)
      entry(it.name, it.handle);
    for (const NamedObject& it : dictionary.objects) {
      beginObject(out, it.type, it.handle, dictionary.handle);
      for (const RawPair& pair : it.pairs)
        out.verbatim(pair.code, pair.value);
    }
  }
  writeLayout(out, blocks_[0], "Model", modelLayout_, 0);
  writeLayout(out, blocks_[1], "Layout1", paperLayout_, 1);
  endSection(out);
}

void DrawingBuilder::writeLayout(PairWriter& out, const BlockBuilder& space, std::string_view name,
                                 Handle layout, int order) const {
  constexpr int modelTypeFlag = 1024;
  constexpr std::array paperLimits{Point{0.0, 0.0}, Point{420.0, 297.0}};
  const bool isModel = order == 0;
  beginObject(out, "LAYOUT", layout, layouts_);
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
  out.flatPoint(10, isModel ? low_ : paperLimits[0]);
  out.flatPoint(11, isModel ? high_ : paperLimits[1]);
  out.point(12, {});
  out.point(14, isModel ? low_ : paperLimits[0]);
  out.point(15, isModel ? high_ : paperLimits[1]);
  out.real(146, 0.0);
  out.point(13, {});
  out.point(16, {1.0, 0.0, 0.0});
  out.point(17, {0.0, 1.0, 0.0});
  out.integer(76, 0);
  out.handle(330, space.recordHandle_);
}

}  // namespace velt::samples
