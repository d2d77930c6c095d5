#include <cstdint>
#include <string>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/database/EnhancedBlocks.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace externalReferences {
namespace {

using platform::Category;

constexpr const char* reference = "*";
constexpr std::int64_t externalFlag = 4;
constexpr std::int64_t overlaidFlag = 8;

// Of the block's head, where the flags and the path stand.
const database::TableEntry* definitionOf(const database::Drawing& drawing, std::uint32_t record) {
  const database::TableEntry* const block = database::referredBlock(drawing, record);
  return block != nullptr && block->definition != dxf::none ? block : nullptr;
}

std::int64_t flagsOf(const database::Drawing& drawing, std::uint32_t record) {
  const database::TableEntry* const block = definitionOf(drawing, record);
  return block == nullptr ? 0 : database::Lens(drawing, block->definition).integer(70, "AcDbBlockBegin", 0);
}

bool isExternal(const database::Drawing& drawing, std::uint32_t record) {
  return (flagsOf(drawing, record) & externalFlag) != 0;
}

std::wstring getPath(const Subject& subject) {
  const database::TableEntry* const block = definitionOf(subject.drawing(), subject.record());
  return block == nullptr ? std::wstring()
                          : database::Lens(subject.drawing(), block->definition).text(1, "AcDbBlockBegin");
}

std::wstring getName(const Subject& subject) {
  return subject.lens().name(2, reference);
}

bool getOverlay(const Subject& subject) {
  return (flagsOf(subject.drawing(), subject.record()) & overlaidFlag) != 0;
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name               label        type            category                   access                                  writability                                        choices        weight help
  {  4, L"Path",           L"Path",     VT_BSTR,        Category::Misc,            computed<getPath>(),                    readOnly(reasons::belongsToSharedBlock),           Choices::None, 110,   L"File of the drawing."},
  {  1, L"Name",           L"Name",     VT_BSTR,        Category::Misc,            computed<getName>(),                    readOnly(reasons::belongsToSharedBlock),           Choices::None, 120,   L"What this drawing calls the other one."},
  {  2, L"Overlay",        L"Overlay",  VT_BOOL,        Category::Misc,            computed<getOverlay>(),                 readOnly(reasons::belongsToBlock),                 Choices::None, 130,   L"Whether drawings that refer to this one leave it out."},
  {  3, L"Rotation",       L"Rotation", types::angle,   Category::Misc,            storedDirection(50, reference),         writable,                                          Choices::None, 140,   L"Direction of the drawing's X axis in its plane."},
  {  5, L"InsertionPoint", L"Position", VT_VARIANT,     Category::Geometry,        objectPoint(10, reference),             writable,                                          Choices::None, 150,   L"Where the base point of the drawing is."},
  {  6, L"XScaleFactor",   L"Scale X",  types::noUnits, Category::Geometry,        storedReal(41, reference, 1).notZero(), writable,                                          Choices::None, 160,   L"Scale along the drawing's X axis."},
  {  7, L"YScaleFactor",   L"Scale Y",  types::noUnits, Category::Geometry,        storedReal(42, reference, 1).notZero(), writable,                                          Choices::None, 170,   L"Scale along the drawing's Y axis."},
  {  8, L"ZScaleFactor",   L"Scale Z",  types::noUnits, Category::Geometry,        storedReal(43, reference, 1).notZero(), writable,                                          Choices::None, 180,   L"Scale along the drawing's Z axis."},
  {  9, L"Normal",         L"Normal",   VT_VARIANT,     Category::Visualization3D, computedPoint<getNormal>(),             readOnly(reasons::positionAndRotationWouldFollow), Choices::None, 190,   L"Upright on the plane of the reference."},
};
// clang-format on

}  // namespace
}  // namespace externalReferences

constinit const AutomationClass classes::VeltExternalReference = {
    .clsid = CLSID_VeltExternalReference,
    .name = L"VeltExternalReference",
    .label = L"External Reference",
    .dxfName = "INSERT",
    .standsFor = externalReferences::isExternal,
    .help = L"A placed drawing.",
    .general = &entityRows,
    .rows = externalReferences::rows,
};

}  // namespace velt::automation
