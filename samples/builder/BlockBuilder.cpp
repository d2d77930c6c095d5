#include "samples/builder/BlockBuilder.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "samples/builder/Records.h"

namespace velt::samples {

using dxf::Encoding;
using dxf::PairWriter;

namespace {

constexpr std::string_view hyperlinkApplication = "PE_URL";
constexpr std::size_t longestChunk = 250;

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

Handle BlockBuilder::begin(std::string_view type, const EntityStyle& style, std::optional<Handle> owner) {
  const Handle handle = parts_.newHandle();
  beginObject(out_, type, handle, owner.value_or(block_.record));
  out_.verbatim(100, "AcDbEntity");
  if (block_.isPaper()) out_.integer(67, 1);
  out_.text(8, style.layer);
  if (style.lineType != "ByLayer") out_.text(6, style.lineType);
  if (style.color != byLayer) out_.integer(62, style.color);
  if (style.lineWeight != lineWeightByLayer) out_.integer(370, style.lineWeight);
  if (style.lineTypeScale != 1.0) out_.real(48, style.lineTypeScale);
  if (!style.visible) out_.integer(60, 1);
  if (style.trueColor) out_.integer(420, *style.trueColor);
  return handle;
}

void BlockBuilder::end(const EntityStyle& style) {
  for (const ExtendedData& data : style.extendedData) {
    parts_.application(data.application);
    out_.text(1001, data.application);
    write(out_, data.values);
  }
  if (!style.hyperlink) return;
  parts_.application(hyperlinkApplication);
  out_.verbatim(1001, hyperlinkApplication);
  out_.text(1000, style.hyperlink->address);
  out_.verbatim(1002, "{");
  out_.text(1000, style.hyperlink->description);
  out_.verbatim(1002, "}");
}

void BlockBuilder::isMadeOf(const BlockBuilder& definition) {
  block_.madeOf = definition.block_.record;
  parts_.application(dynamicBlockApplication);
}

Handle BlockBuilder::line(const Point& from, const Point& to, const EntityStyle& style) {
  const Handle handle = begin("LINE", style);
  out_.verbatim(100, "AcDbLine");
  out_.point(10, from);
  out_.point(11, to);
  end(style);
  return handle;
}

Handle BlockBuilder::point(const Point& at, const EntityStyle& style) {
  const Handle handle = begin("POINT", style);
  out_.verbatim(100, "AcDbPoint");
  out_.point(10, at);
  end(style);
  return handle;
}

Handle BlockBuilder::circle(const Point& centre, double radius, const EntityStyle& style) {
  const Handle handle = begin("CIRCLE", style);
  out_.verbatim(100, "AcDbCircle");
  out_.point(10, centre);
  out_.real(40, radius);
  end(style);
  return handle;
}

Handle BlockBuilder::arc(const Point& centre, double radius, double startAngle, double endAngle,
                         const EntityStyle& style) {
  const Handle handle = begin("ARC", style);
  out_.verbatim(100, "AcDbCircle");
  out_.point(10, centre);
  out_.real(40, radius);
  out_.verbatim(100, "AcDbArc");
  out_.real(50, startAngle);
  out_.real(51, endAngle);
  end(style);
  return handle;
}

Handle BlockBuilder::ellipse(const Point& centre, const Point& major, double ratio, const EntityStyle& style,
                             double startAngle, double endAngle) {
  const Handle handle = begin("ELLIPSE", style);
  out_.verbatim(100, "AcDbEllipse");
  out_.point(10, centre);
  out_.point(11, major);
  out_.point(210, {0.0, 0.0, 1.0});
  out_.real(40, ratio);
  out_.real(41, radians(startAngle));
  out_.real(42, radians(endAngle));
  end(style);
  return handle;
}

Handle BlockBuilder::polyline(const Outline& outline, const PolylineStyle& shape, const EntityStyle& style) {
  const Handle handle = begin("LWPOLYLINE", style);
  out_.verbatim(100, "AcDbPolyline");
  out_.integer(90, static_cast<std::int64_t>(outline.size()));
  out_.integer(70, shape.closed ? 1 : 0);
  if (shape.elevation != 0.0) out_.real(38, shape.elevation);
  for (const Vertex& vertex : outline) {
    out_.flatPoint(10, {vertex.x, vertex.y});
    if (vertex.startWidth != 0.0 || vertex.endWidth != 0.0) {
      out_.real(40, vertex.startWidth);
      out_.real(41, vertex.endWidth);
    }
    if (vertex.bulge != 0.0) out_.real(42, vertex.bulge);
  }
  end(style);
  return handle;
}

Handle BlockBuilder::text(const Point& at, std::string_view wording, const TextStyle& shape,
                          const EntityStyle& style) {
  const Handle handle = begin("TEXT", style);
  writeTextShape(out_, at, wording, shape);
  out_.verbatim(100, "AcDbText");
  if (shape.alignVertical != AlignVertical::Baseline) {
    out_.integer(73, static_cast<int>(shape.alignVertical));
  }
  end(style);
  return handle;
}

Handle BlockBuilder::mtext(const Point& at, std::string_view wording, const MTextStyle& shape,
                           const EntityStyle& style) {
  const Handle handle = begin("MTEXT", style);
  out_.verbatim(100, "AcDbMText");
  out_.point(10, at);
  out_.real(40, shape.height);
  out_.real(41, shape.width);
  out_.integer(71, shape.attachment);
  out_.integer(72, 1);
  const std::vector<std::string> chunks = chunksOf(wording, parts_.encoding);
  for (std::size_t i = 0; i < chunks.size(); ++i)
    out_.verbatim(i + 1 == chunks.size() ? 1 : 3, chunks[i]);
  out_.text(7, shape.style);
  if (shape.rotation != 0.0) out_.point(11, turned({1.0, 0.0}, shape.rotation));
  out_.integer(73, 1);
  out_.real(44, 1.0);
  end(style);
  return handle;
}

Handle BlockBuilder::insert(std::string_view block, const Placement& placement, const EntityStyle& style) {
  const Handle handle = begin("INSERT", style);
  out_.verbatim(100, "AcDbBlockReference");
  if (!placement.attributes.empty()) out_.integer(66, 1);
  out_.text(2, block);
  out_.point(10, placement.at);
  if (placement.scaleX != 1.0) out_.real(41, placement.scaleX);
  if (placement.scaleY != 1.0) out_.real(42, placement.scaleY);
  if (placement.scaleZ != 1.0) out_.real(43, placement.scaleZ);
  if (placement.rotation != 0.0) out_.real(50, placement.rotation);
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
  writeTextShape(out_, attribute.at, attribute.value, {.height = attribute.height, .align = attribute.align});
  out_.verbatim(100, "AcDbAttribute");
  out_.text(2, attribute.tag);
  out_.integer(70, attribute.visible ? 0 : 1);
}

Handle BlockBuilder::attributeDefinition(const Attribute& attribute, std::string_view prompt,
                                         const EntityStyle& style) {
  block_.hasAttributes = true;
  const Handle handle = begin("ATTDEF", style);
  writeTextShape(out_, attribute.at, attribute.value, {.height = attribute.height, .align = attribute.align});
  out_.verbatim(100, "AcDbAttributeDefinition");
  out_.text(3, prompt);
  out_.text(2, attribute.tag);
  out_.integer(70, attribute.visible ? 0 : 1);
  end(style);
  return handle;
}

Handle BlockBuilder::beginHatch(std::span<const Outline> boundary, std::string_view pattern, bool isSolid,
                                const EntityStyle& style) {
  constexpr int externalPolyline = 1 | 2;
  const Handle handle = begin("HATCH", style);
  out_.verbatim(100, "AcDbHatch");
  out_.point(10, {});
  out_.point(210, {0.0, 0.0, 1.0});
  out_.text(2, pattern);
  out_.integer(70, isSolid ? 1 : 0);
  out_.integer(71, 0);
  out_.integer(91, static_cast<std::int64_t>(boundary.size()));
  for (const Outline& outline : boundary) {
    const bool hasBulges =
        std::any_of(outline.begin(), outline.end(), [](const Vertex& v) { return v.bulge != 0.0; });
    out_.integer(92, externalPolyline);
    out_.integer(72, hasBulges ? 1 : 0);
    out_.integer(73, 1);
    out_.integer(93, static_cast<std::int64_t>(outline.size()));
    for (const Vertex& vertex : outline) {
      out_.flatPoint(10, {vertex.x, vertex.y});
      if (hasBulges) out_.real(42, vertex.bulge);
    }
    out_.integer(97, 0);
  }
  out_.integer(75, 0);
  out_.integer(76, 1);
  return handle;
}

void BlockBuilder::endHatch(const EntityStyle& style) {
  out_.integer(98, 0);
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
  out_.real(52, pattern.angle);
  out_.real(41, pattern.scale);
  out_.integer(77, 0);
  out_.integer(78, static_cast<std::int64_t>(pattern.lines.size()));
  for (const PatternLine& line : pattern.lines) {
    // The file holds the lines as they come to lie in the drawing.
    const double angle = line.angle + pattern.angle;
    const Point base = turned({line.base.x * pattern.scale, line.base.y * pattern.scale}, pattern.angle);
    const Point offset = turned({line.offset.x * pattern.scale, line.offset.y * pattern.scale}, angle);
    out_.real(53, angle);
    out_.real(43, base.x);
    out_.real(44, base.y);
    out_.real(45, offset.x);
    out_.real(46, offset.y);
    out_.integer(79, static_cast<std::int64_t>(line.dashes.size()));
    for (const double dash : line.dashes)
      out_.real(49, dash * pattern.scale);
  }
  endHatch(style);
  return handle;
}

Handle BlockBuilder::gradientHatch(std::span<const Outline> boundary, const HatchGradient& gradient,
                                   const EntityStyle& style) {
  const Handle handle = beginHatch(boundary, "SOLID", true, style);
  out_.integer(98, 0);
  out_.integer(450, 1);
  out_.integer(451, 0);
  out_.real(460, radians(gradient.angle));
  out_.real(461, 0.0);
  out_.integer(452, 0);
  out_.real(462, 0.0);
  out_.integer(453, 2);
  out_.real(463, 0.0);
  out_.integer(63, 5);
  out_.integer(421, gradient.firstColor);
  out_.real(463, 1.0);
  out_.integer(63, 7);
  out_.integer(421, gradient.secondColor);
  out_.text(470, gradient.name);
  end(style);
  return handle;
}

Handle BlockBuilder::raw(std::string_view type, const Pairs& pairs, const EntityStyle& style,
                         std::optional<Handle> owner) {
  const Handle handle = begin(type, style, owner);
  write(out_, pairs);
  end(style);
  return handle;
}

}  // namespace velt::samples
