#include "view/Painter.h"

#include <cmath>
#include <string_view>
#include <unordered_map>

#include "embedded/database/Entity.h"
#include "view/entities/Entities.h"

namespace velt::view {
namespace {

using database::Entity;
using database::Lens;

// Blocks are seldom deeper than ten inside each other; the stack of the thread is not endless.
constexpr std::size_t deepest = 100;

using DrawEntity = void (*)(Painter&, const Lens&, const Place&);

struct Kind {
  DrawEntity draw;
  // It is seen although the layer of the entity is off, as far as what it shows is on other layers.
  bool showsOthers = false;
};

// clang-format off
const std::unordered_map<std::string_view, Kind>& kinds() {
  static const std::unordered_map<std::string_view, Kind> table = {
    // DXF type                 drawn by                  shows others
    {"LINE",                   {entities::drawLine}},
    {"ARC",                    {entities::drawArc}},
    {"CIRCLE",                 {entities::drawArc}},
    {"ELLIPSE",                {entities::drawEllipse}},
    {"SPLINE",                 {entities::drawSpline}},
    {"HELIX",                  {entities::drawSpline}},
    {"RAY",                    {entities::drawRay}},
    {"XLINE",                  {entities::drawXLine}},
    {"POINT",                  {entities::drawPoint}},
    {"LWPOLYLINE",             {entities::drawLightPolyline}},
    {"POLYLINE",               {entities::drawHeavyPolyline}},
    {"MLINE",                  {entities::drawMultiline}},
    {"HATCH",                  {entities::drawHatch}},
    {"SOLID",                  {entities::drawSolid}},
    {"TRACE",                  {entities::drawSolid}},
    {"3DFACE",                 {entities::drawFace}},
    {"MESH",                   {entities::drawMesh}},
    {"TEXT",                   {entities::drawText}},
    {"ATTRIB",                 {entities::drawAttribute}},
    {"ATTDEF",                 {entities::drawAttributeDefinition}},
    {"MTEXT",                  {entities::drawMText}},
    {"INSERT",                 {entities::drawInsert,    true}},
    {"DIMENSION",              {entities::drawDimension}},
    {"ARC_DIMENSION",          {entities::drawDimension}},
    {"LARGE_RADIAL_DIMENSION", {entities::drawDimension}},
    {"ACAD_TABLE",             {entities::drawTable}},
    {"LEADER",                 {entities::drawLeader}},
    {"MULTILEADER",            {entities::drawMultileader}},
    {"MLEADER",                {entities::drawMultileader}},
    {"TOLERANCE",              {entities::drawTolerance}},
    {"SHAPE",                  {entities::drawShape}},
    {"IMAGE",                  {entities::drawImage}},
    {"WIPEOUT",                {entities::drawWipeout}},
    {"PDFUNDERLAY",            {entities::drawUnderlay}},
    {"DWFUNDERLAY",            {entities::drawUnderlay}},
    {"DGNUNDERLAY",            {entities::drawUnderlay}},
    {"OLE2FRAME",              {entities::drawOleFrame}},
    {"VIEWPORT",               {entities::drawViewport,  true}},
  };
  return table;
}
// clang-format on

}  // namespace

void Painter::drawSpace(std::uint32_t contents, const Surroundings& around) {
  for (const std::uint32_t record : contents_.of(contents)) {
    if (canvas_.isFull()) return;
    drawRecord(record, around);
  }
}

void Painter::drawBlock(std::wstring_view name, const Surroundings& around) {
  const database::TableEntry* const block = drawing_.blocks().find(name);
  if (block == nullptr) return;
  const std::uint32_t index = drawing_.blocks().indexOf(*block);
  if (openBlocks_[index] || depth_ >= deepest) return;
  Surroundings inner = around;
  if (block->definition != dxf::none) {
    const database::Point base = Lens(drawing_, block->definition).point(10, "AcDbBlockBegin");
    inner.toSpace = around.toSpace.after(Transform::moved({-base[0], -base[1], -base[2]}));
  }
  openBlocks_[index] = true;
  ++depth_;
  drawSpace(index, inner);
  --depth_;
  openBlocks_[index] = false;
}

void Painter::drawMember(std::uint32_t record, const Surroundings& around) {
  drawRecord(record, around);
}

void Painter::drawRecord(std::uint32_t record, const Surroundings& around) {
  if (++drawn_ > canvas_.options().limits.entities) {
    canvas_.setFull();
    return;
  }
  const Entity entity(drawing_, record);
  const auto kind = kinds().find(entity.dxfName());
  if (kind == kinds().end() || entity.isErased()) return;
  const Lens lens = entity.lens();
  if (lens.integer(60, database::commonSubclass, 0) == 1) return;
  Place place{around, appearance_.lookOf(entity, around.block, around.hiddenLayers), record,
              around.entity != none ? around.entity : record};
  if (place.look.isFrozen || (place.look.isOff && !kind->second.showsOthers)) return;
  kind->second.draw(*this, lens, place);
}

Surroundings Painter::inside(const Place& place, const Transform& inner) {
  Surroundings around = place.around;
  around.toSpace = place.around.toSpace.after(inner);
  around.block = &place.look;
  around.entity = place.entity;
  around.dashScale *= inner.scale();
  return around;
}

Pen Painter::pen(const Place& place) const {
  return {.ink = place.look.ink,
          .lineweight = static_cast<float>(place.look.lineweight),
          .opacity = place.look.opacity,
          .entity = place.entity,
          .viewport = place.around.viewport,
          .clip = place.around.clip};
}

Pen Painter::dashedPen(const Place& place) {
  // Below this, in pixels, a pattern is seen as a grey line, and costs thousands of dashes.
  constexpr double shortestPattern = 3;
  Pen pen = this->pen(place);
  const std::vector<double>& stored = appearance_.dashesOf(place.look.linetype);
  const double factor = place.look.linetypeScale * place.around.dashScale;
  if (stored.empty() || !(factor > 0) || !std::isfinite(factor)) return pen;
  std::vector<double> dashes = stored;
  double total = 0;
  for (double& dash : dashes)
    total += dash *= factor;
  if (std::isfinite(total) && canvas_.pixels(total) >= shortestPattern)
    pen.dashes = canvas_.addDashes(dashes);
  return pen;
}

Picture draw(const database::Drawing& drawing, const Contents& contents, const Space& space,
             const DrawOptions& options) {
  Painter painter(drawing, contents, options);
  painter.drawSpace(space.contents, {.isPaper = space.isPaper});
  return painter.take();
}

}  // namespace velt::view
