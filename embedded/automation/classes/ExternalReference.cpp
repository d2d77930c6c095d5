#include <cstdint>
#include <string>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/model/Access.h"
#include "embedded/database/EnhancedBlocks.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
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
  // id name               label        type            category                   access                                  choices        weight help
  { 4, L"Path",           L"Path",     VT_BSTR,        Category::Misc,            computed<getPath>(),                    Choices::None, 110,   L"File of the drawing. Read-only: it belongs to the block, which other references may show."},
  { 1, L"Name",           L"Name",     VT_BSTR,        Category::Misc,            computed<getName>(),                    Choices::None, 120,   L"What this drawing calls the other one. Read-only: it belongs to the block, which other references may show."},
  { 2, L"Overlay",        L"Overlay",  VT_BOOL,        Category::Misc,            computed<getOverlay>(),                 Choices::None, 130,   L"Whether drawings that refer to this one leave it out. Read-only: it belongs to the block."},
  { 3, L"Rotation",       L"Rotation", types::angle,   Category::Misc,            storedDirection(50, reference),         Choices::None, 140,   L"Direction of the drawing's X axis in its plane."},
  { 5, L"InsertionPoint", L"Position", VT_VARIANT,     Category::Geometry,        objectPoint(10, reference),             Choices::None, 150,   L"Where the base point of the drawing is."},
  { 6, L"XScaleFactor",   L"Scale X",  types::noUnits, Category::Geometry,        storedReal(41, reference, 1).notZero(), Choices::None, 160,   L"Scale along the drawing's X axis."},
  { 7, L"YScaleFactor",   L"Scale Y",  types::noUnits, Category::Geometry,        storedReal(42, reference, 1).notZero(), Choices::None, 170,   L"Scale along the drawing's Y axis."},
  { 8, L"ZScaleFactor",   L"Scale Z",  types::noUnits, Category::Geometry,        storedReal(43, reference, 1).notZero(), Choices::None, 180,   L"Scale along the drawing's Z axis."},
  { 9, L"Normal",         L"Normal",   VT_VARIANT,     Category::Visualization3D, computedPoint<getNormal>(),             Choices::None, 190,   L"Upright on the plane of the reference. Read-only: position and rotation would have to follow it."},
};
// clang-format on

}  // namespace

constinit const AutomationClass classes::VeltExternalReference = {
    CLSID_VeltExternalReference,
    L"VeltExternalReference",
    L"External Reference",
    "INSERT",
    L"A placed drawing.",
    &entityRows,
    rows,
    nullptr,
    {},
    isExternal,
};

}  // namespace velt::automation
