#include "embedded/database/ObjectClass.h"

#include <array>
#include <cstddef>
#include <unordered_map>

#include "embedded/automation/HostIds.h"
#include "host/database/VkDbEntity.h"

namespace velt::database {
namespace {

constexpr FlagTest always{};
/// The kind of a dimension stands in the lowest three bits.
constexpr unsigned dimensionKind = 7;
constexpr const CLSID* none = nullptr;

// clang-format off
constexpr std::array table{
    //          DXF name                  flags               shape                  run-time class                   automation class
    ObjectClass{"LINE",                   always,             Shape::Entity,         L"VkDbLine",                     &CLSID_VeltLine},
    ObjectClass{"POINT",                  always,             Shape::Entity,         L"VkDbPoint",                    &CLSID_VeltPoint},
    ObjectClass{"CIRCLE",                 always,             Shape::Entity,         L"VkDbCircle",                   &CLSID_VeltCircle},
    ObjectClass{"ARC",                    always,             Shape::Entity,         L"VkDbArc",                      &CLSID_VeltArc},
    ObjectClass{"ELLIPSE",                always,             Shape::Entity,         L"VkDbEllipse",                  &CLSID_VeltEllipse},
    ObjectClass{"LWPOLYLINE",             always,             Shape::Entity,         L"VkDbPolyline",                 &CLSID_VeltLWPolyline},
    ObjectClass{"TEXT",                   always,             Shape::Entity,         L"VkDbText",                     &CLSID_VeltText},
    ObjectClass{"MTEXT",                  always,             Shape::Entity,         L"VkDbMText",                    &CLSID_VeltMText},
    ObjectClass{"INSERT",                 always,             Shape::BlockReference, L"VkDbBlockReference",           &CLSID_VeltBlockReference},
    ObjectClass{"HATCH",                  always,             Shape::Entity,         L"VkDbHatch",                    &CLSID_VeltHatch},
    ObjectClass{"POLYLINE",               {64, 64},           Shape::Entity,         L"VkDbPolyFaceMesh",             none},
    ObjectClass{"POLYLINE",               {16, 16},           Shape::Entity,         L"VkDbPolygonMesh",              none},
    ObjectClass{"POLYLINE",               {8, 8},             Shape::Entity,         L"VkDb3dPolyline",               none},
    ObjectClass{"POLYLINE",               always,             Shape::Entity,         L"VkDb2dPolyline",               none},
    ObjectClass{"VERTEX",                 always,             Shape::Entity,         L"VkDbVertex",                   none},
    ObjectClass{"SEQEND",                 always,             Shape::Entity,         L"VkDbSequenceEnd",              none},
    ObjectClass{"ATTRIB",                 always,             Shape::Entity,         L"VkDbAttribute",                none},
    ObjectClass{"ATTDEF",                 always,             Shape::Entity,         L"VkDbAttributeDefinition",      none},
    ObjectClass{"SPLINE",                 always,             Shape::Entity,         L"VkDbSpline",                   none},
    ObjectClass{"SOLID",                  always,             Shape::Entity,         L"VkDbSolid",                    none},
    ObjectClass{"TRACE",                  always,             Shape::Entity,         L"VkDbTrace",                    none},
    ObjectClass{"3DFACE",                 always,             Shape::Entity,         L"VkDbFace",                     none},
    ObjectClass{"3DSOLID",                always,             Shape::Entity,         L"VkDb3dSolid",                  none},
    ObjectClass{"BODY",                   always,             Shape::Entity,         L"VkDbBody",                     none},
    ObjectClass{"REGION",                 always,             Shape::Entity,         L"VkDbRegion",                   none},
    ObjectClass{"MESH",                   always,             Shape::Entity,         L"VkDbSubDMesh",                 none},
    ObjectClass{"RAY",                    always,             Shape::Entity,         L"VkDbRay",                      none},
    ObjectClass{"XLINE",                  always,             Shape::Entity,         L"VkDbXline",                    none},
    ObjectClass{"MLINE",                  always,             Shape::Entity,         L"VkDbMline",                    none},
    ObjectClass{"SHAPE",                  always,             Shape::Entity,         L"VkDbShape",                    none},
    ObjectClass{"IMAGE",                  always,             Shape::Entity,         L"VkDbRasterImage",              none},
    ObjectClass{"WIPEOUT",                always,             Shape::Entity,         L"VkDbWipeout",                  none},
    ObjectClass{"PDFUNDERLAY",            always,             Shape::Entity,         L"VkDbPdfReference",             none},
    ObjectClass{"DWFUNDERLAY",            always,             Shape::Entity,         L"VkDbDwfReference",             none},
    ObjectClass{"DGNUNDERLAY",            always,             Shape::Entity,         L"VkDbDgnReference",             none},
    ObjectClass{"VIEWPORT",               always,             Shape::Entity,         L"VkDbViewport",                 none},
    ObjectClass{"LEADER",                 always,             Shape::Entity,         L"VkDbLeader",                   none},
    ObjectClass{"MULTILEADER",            always,             Shape::Entity,         L"VkDbMLeader",                  none},
    ObjectClass{"TOLERANCE",              always,             Shape::Entity,         L"VkDbFcf",                      none},
    ObjectClass{"ACAD_TABLE",             always,             Shape::Entity,         L"VkDbTable",                    none},
    ObjectClass{"DIMENSION",              {dimensionKind, 0}, Shape::Entity,         L"VkDbRotatedDimension",         none},
    ObjectClass{"DIMENSION",              {dimensionKind, 1}, Shape::Entity,         L"VkDbAlignedDimension",         none},
    ObjectClass{"DIMENSION",              {dimensionKind, 2}, Shape::Entity,         L"VkDb2LineAngularDimension",    none},
    ObjectClass{"DIMENSION",              {dimensionKind, 3}, Shape::Entity,         L"VkDbDiametricDimension",       none},
    ObjectClass{"DIMENSION",              {dimensionKind, 4}, Shape::Entity,         L"VkDbRadialDimension",          none},
    ObjectClass{"DIMENSION",              {dimensionKind, 5}, Shape::Entity,         L"VkDb3PointAngularDimension",   none},
    ObjectClass{"DIMENSION",              {dimensionKind, 6}, Shape::Entity,         L"VkDbOrdinateDimension",        none},
    ObjectClass{"DIMENSION",              always,             Shape::Entity,         L"VkDbDimension",                none},
    ObjectClass{"LARGE_RADIAL_DIMENSION", always,             Shape::Entity,         L"VkDbRadialDimensionLarge",     none},
    ObjectClass{"ARC_DIMENSION",          always,             Shape::Entity,         L"VkDbArcDimension",             none},
    ObjectClass{"TABLE",                  always,             Shape::Object,         L"VkDbSymbolTable",              none},
    ObjectClass{"LAYER",                  always,             Shape::Layer,          L"VkDbLayerTableRecord",         none},
    ObjectClass{"LTYPE",                  always,             Shape::Object,         L"VkDbLinetypeTableRecord",      none},
    ObjectClass{"STYLE",                  always,             Shape::Object,         L"VkDbTextStyleTableRecord",     none},
    ObjectClass{"DIMSTYLE",               always,             Shape::Object,         L"VkDbDimStyleTableRecord",      none},
    ObjectClass{"BLOCK_RECORD",           always,             Shape::Object,         L"VkDbBlockTableRecord",         none},
    ObjectClass{"APPID",                  always,             Shape::Object,         L"VkDbRegAppTableRecord",        none},
    ObjectClass{"VIEW",                   always,             Shape::Object,         L"VkDbViewTableRecord",          none},
    ObjectClass{"VPORT",                  always,             Shape::Object,         L"VkDbViewportTableRecord",      none},
    ObjectClass{"UCS",                    always,             Shape::Object,         L"VkDbUCSTableRecord",           none},
    ObjectClass{"BLOCK",                  always,             Shape::Object,         L"VkDbBlockBegin",               none},
    ObjectClass{"ENDBLK",                 always,             Shape::Object,         L"VkDbBlockEnd",                 none},
    ObjectClass{"DICTIONARY",             always,             Shape::Object,         L"VkDbDictionary",               none},
    ObjectClass{"LAYOUT",                 always,             Shape::Object,         L"VkDbLayout",                   none},
    ObjectClass{"GROUP",                  always,             Shape::Object,         L"VkDbGroup",                    none},
    ObjectClass{"XRECORD",                always,             Shape::Object,         L"VkDbXrecord",                  none},
    // Whatever has no row of its own.
    ObjectClass{"",                       always,             Shape::Entity,         L"VkDbEntity",                   none},
    ObjectClass{"",                       always,             Shape::Object,         L"VkDbObject",                   none},
};
// clang-format on

constexpr const ObjectClass& anyEntity = table[table.size() - 2];
constexpr const ObjectClass& anyObject = table[table.size() - 1];

/// What is made of the table when it is first asked for. The classes are never destroyed: who registered a protocol
/// extension on one, or holds an object of it, may come back as late as when the process ends.
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

  /// The first row of the DXF name; null for none.
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
    // Ends at the last row of the name at the latest, which matches every record.
    while ((flags & row->flags.mask) != row->flags.value)
      ++row;
  }
  if (row != nullptr && isEntityShape(row->shape) == isEntity) return *row;
  return isEntity ? anyEntity : anyObject;
}

const ObjectClass& classOfBlocks() {
  return *Registry::ofProcess().first("BLOCK_RECORD");
}

VkRxClass* runtimeClassNamed(std::wstring_view name) {
  return Registry::ofProcess().named(name);
}

}  // namespace velt::database
