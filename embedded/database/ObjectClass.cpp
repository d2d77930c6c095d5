#include "embedded/database/ObjectClass.h"

#include <array>
#include <cstddef>
#include <unordered_map>

#include "host/database/VkDbEntity.h"

namespace velt::database {
namespace {

constexpr FlagTest always{};
// The kind of a dimension stands in the lowest three bits.
constexpr unsigned dimensionKind = 7;

// clang-format off
constexpr std::array table{
    //          DXF name                  flags               shape                  run-time class
    ObjectClass{"LINE",                   always,             Shape::Entity,         L"VkDbLine"},
    ObjectClass{"POINT",                  always,             Shape::Entity,         L"VkDbPoint"},
    ObjectClass{"CIRCLE",                 always,             Shape::Entity,         L"VkDbCircle"},
    ObjectClass{"ARC",                    always,             Shape::Entity,         L"VkDbArc"},
    ObjectClass{"ELLIPSE",                always,             Shape::Entity,         L"VkDbEllipse"},
    ObjectClass{"LWPOLYLINE",             always,             Shape::Entity,         L"VkDbPolyline"},
    ObjectClass{"TEXT",                   always,             Shape::Entity,         L"VkDbText"},
    ObjectClass{"MTEXT",                  always,             Shape::Entity,         L"VkDbMText"},
    ObjectClass{"INSERT",                 always,             Shape::BlockReference, L"VkDbBlockReference"},
    ObjectClass{"HATCH",                  always,             Shape::Entity,         L"VkDbHatch"},
    ObjectClass{"POLYLINE",               {64, 64},           Shape::Entity,         L"VkDbPolyFaceMesh"},
    ObjectClass{"POLYLINE",               {16, 16},           Shape::Entity,         L"VkDbPolygonMesh"},
    ObjectClass{"POLYLINE",               {8, 8},             Shape::Entity,         L"VkDb3dPolyline"},
    ObjectClass{"POLYLINE",               always,             Shape::Entity,         L"VkDb2dPolyline"},
    ObjectClass{"VERTEX",                 always,             Shape::Entity,         L"VkDbVertex"},
    ObjectClass{"SEQEND",                 always,             Shape::Entity,         L"VkDbSequenceEnd"},
    ObjectClass{"ATTRIB",                 always,             Shape::Entity,         L"VkDbAttribute"},
    ObjectClass{"ATTDEF",                 always,             Shape::Entity,         L"VkDbAttributeDefinition"},
    ObjectClass{"SPLINE",                 always,             Shape::Entity,         L"VkDbSpline"},
    ObjectClass{"SOLID",                  always,             Shape::Entity,         L"VkDbSolid"},
    ObjectClass{"TRACE",                  always,             Shape::Entity,         L"VkDbTrace"},
    ObjectClass{"3DFACE",                 always,             Shape::Entity,         L"VkDbFace"},
    ObjectClass{"3DSOLID",                always,             Shape::Entity,         L"VkDb3dSolid"},
    ObjectClass{"BODY",                   always,             Shape::Entity,         L"VkDbBody"},
    ObjectClass{"REGION",                 always,             Shape::Entity,         L"VkDbRegion"},
    ObjectClass{"MESH",                   always,             Shape::Entity,         L"VkDbSubDMesh"},
    ObjectClass{"RAY",                    always,             Shape::Entity,         L"VkDbRay"},
    ObjectClass{"XLINE",                  always,             Shape::Entity,         L"VkDbXline"},
    ObjectClass{"MLINE",                  always,             Shape::Entity,         L"VkDbMline"},
    ObjectClass{"SHAPE",                  always,             Shape::Entity,         L"VkDbShape"},
    ObjectClass{"IMAGE",                  always,             Shape::Entity,         L"VkDbRasterImage"},
    ObjectClass{"WIPEOUT",                always,             Shape::Entity,         L"VkDbWipeout"},
    ObjectClass{"PDFUNDERLAY",            always,             Shape::Entity,         L"VkDbPdfReference"},
    ObjectClass{"DWFUNDERLAY",            always,             Shape::Entity,         L"VkDbDwfReference"},
    ObjectClass{"DGNUNDERLAY",            always,             Shape::Entity,         L"VkDbDgnReference"},
    ObjectClass{"VIEWPORT",               always,             Shape::Entity,         L"VkDbViewport"},
    ObjectClass{"LEADER",                 always,             Shape::Entity,         L"VkDbLeader"},
    ObjectClass{"MULTILEADER",            always,             Shape::Entity,         L"VkDbMLeader"},
    ObjectClass{"TOLERANCE",              always,             Shape::Entity,         L"VkDbFcf"},
    ObjectClass{"ACAD_TABLE",             always,             Shape::Entity,         L"VkDbTable"},
    ObjectClass{"DIMENSION",              {dimensionKind, 0}, Shape::Entity,         L"VkDbRotatedDimension"},
    ObjectClass{"DIMENSION",              {dimensionKind, 1}, Shape::Entity,         L"VkDbAlignedDimension"},
    ObjectClass{"DIMENSION",              {dimensionKind, 2}, Shape::Entity,         L"VkDb2LineAngularDimension"},
    ObjectClass{"DIMENSION",              {dimensionKind, 3}, Shape::Entity,         L"VkDbDiametricDimension"},
    ObjectClass{"DIMENSION",              {dimensionKind, 4}, Shape::Entity,         L"VkDbRadialDimension"},
    ObjectClass{"DIMENSION",              {dimensionKind, 5}, Shape::Entity,         L"VkDb3PointAngularDimension"},
    ObjectClass{"DIMENSION",              {dimensionKind, 6}, Shape::Entity,         L"VkDbOrdinateDimension"},
    ObjectClass{"DIMENSION",              always,             Shape::Entity,         L"VkDbDimension"},
    ObjectClass{"LARGE_RADIAL_DIMENSION", always,             Shape::Entity,         L"VkDbRadialDimensionLarge"},
    ObjectClass{"ARC_DIMENSION",          always,             Shape::Entity,         L"VkDbArcDimension"},
    ObjectClass{"TABLE",                  always,             Shape::Object,         L"VkDbSymbolTable"},
    ObjectClass{"LAYER",                  always,             Shape::Layer,          L"VkDbLayerTableRecord"},
    ObjectClass{"LTYPE",                  always,             Shape::Object,         L"VkDbLinetypeTableRecord"},
    ObjectClass{"STYLE",                  always,             Shape::Object,         L"VkDbTextStyleTableRecord"},
    ObjectClass{"DIMSTYLE",               always,             Shape::Object,         L"VkDbDimStyleTableRecord"},
    ObjectClass{"BLOCK_RECORD",           always,             Shape::Object,         L"VkDbBlockTableRecord"},
    ObjectClass{"APPID",                  always,             Shape::Object,         L"VkDbRegAppTableRecord"},
    ObjectClass{"VIEW",                   always,             Shape::Object,         L"VkDbViewTableRecord"},
    ObjectClass{"VPORT",                  always,             Shape::Object,         L"VkDbViewportTableRecord"},
    ObjectClass{"UCS",                    always,             Shape::Object,         L"VkDbUCSTableRecord"},
    ObjectClass{"BLOCK",                  always,             Shape::Object,         L"VkDbBlockBegin"},
    ObjectClass{"ENDBLK",                 always,             Shape::Object,         L"VkDbBlockEnd"},
    ObjectClass{"DICTIONARY",             always,             Shape::Object,         L"VkDbDictionary"},
    ObjectClass{"LAYOUT",                 always,             Shape::Object,         L"VkDbLayout"},
    ObjectClass{"GROUP",                  always,             Shape::Object,         L"VkDbGroup"},
    ObjectClass{"XRECORD",                always,             Shape::Object,         L"VkDbXrecord"},
    // Whatever has no row of its own.
    ObjectClass{"",                       always,             Shape::Entity,         L"VkDbEntity"},
    ObjectClass{"",                       always,             Shape::Object,         L"VkDbObject"},
};
// clang-format on

constexpr const ObjectClass& anyEntity = table[table.size() - 2];
constexpr const ObjectClass& anyObject = table[table.size() - 1];

// The run-time classes and look-ups, made from the table at the first call. They are never destroyed: whoever
// registered a protocol extension on a class, or holds an object of it, may use it until the process ends.
class Registry {
 public:
  static const Registry& ofProcess() {
    static const Registry& registry = *new Registry;
    return registry;
  }

  [[nodiscard]] VkRxClass* runtimeClass(const ObjectClass& row) const {
    return byRow_[static_cast<std::size_t>(&row - table.data())];
  }

  [[nodiscard]] VkRxClass* named(std::wstring_view name) const {
    const auto found = byName_.find(name);
    return found != byName_.end() ? found->second : nullptr;
  }

  // The first row of the DXF name; null for none.
  [[nodiscard]] const ObjectClass* first(std::string_view dxfName) const {
    const auto found = byDxfName_.find(dxfName);
    return found != byDxfName_.end() ? found->second : nullptr;
  }

 private:
  Registry() {
    for (VkRxClass* known : {VkDbObject::desc(), VkDbEntity::desc(), VkDbBlockReference::desc(),
                             VkDbLayerTableRecord::desc(), VkDbDatabase::desc()}) {
      byName_.emplace(known->name(), known);
    }
    for (std::size_t index = 0; index < table.size(); ++index) {
      const ObjectClass& row = table[index];
      if (!row.dxfName.empty()) byDxfName_.emplace(row.dxfName, &row);
      if (!byName_.contains(row.name)) {
        VkRxClass* const parent = isEntityShape(row.shape) ? VkDbEntity::desc() : VkDbObject::desc();
        byName_.emplace(row.name, new VkRxClass(row.name, parent));
      }
      byRow_[index] = byName_.find(row.name)->second;
    }
  }

  std::array<VkRxClass*, table.size()> byRow_{};
  std::unordered_map<std::wstring_view, VkRxClass*> byName_;
  std::unordered_map<std::string_view, const ObjectClass*> byDxfName_;
};

}  // namespace

VkRxClass* ObjectClass::runtimeClass() const {
  return Registry::ofProcess().runtimeClass(*this);
}

std::span<const ObjectClass> objectClasses() {
  return table;
}

const ObjectClass& classOf(const dxf::RecordView& record, bool isEntity) {
  const ObjectClass* row = Registry::ofProcess().first(record.type());
  if (row != nullptr && row->flags.mask != 0) {
    const auto flags = static_cast<unsigned>(record.integer(70, dxf::anySubclass).value_or(0));
    // Ends: the last row of a name matches every record.
    while ((flags & row->flags.mask) != row->flags.value)
      ++row;
  }
  if (row != nullptr && isEntityShape(row->shape) == isEntity) return *row;
  return isEntity ? anyEntity : anyObject;
}

const ObjectClass& classOfBlocks() {
  return *Registry::ofProcess().first("BLOCK_RECORD");
}

const ObjectClass& classOfLayers() {
  return *Registry::ofProcess().first("LAYER");
}

VkRxClass* runtimeClassNamed(std::wstring_view name) {
  return Registry::ofProcess().named(name);
}

}  // namespace velt::database
