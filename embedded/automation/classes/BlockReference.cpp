#include <string>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/automation/texts/AttachedTexts.h"
#include "embedded/database/EnhancedBlocks.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace blockReferences {
namespace {

using platform::Category;

// clang-format off
constexpr EnumMember insertUnitsMembers[] = {
  // value  name                   label
  {  0,     L"Unitless",           L"Unitless"},
  {  1,     L"Inches",             L"Inches"},
  {  2,     L"Feet",               L"Feet"},
  {  3,     L"Miles",              L"Miles"},
  {  4,     L"Millimeters",        L"Millimeters"},
  {  5,     L"Centimeters",        L"Centimeters"},
  {  6,     L"Meters",             L"Meters"},
  {  7,     L"Kilometers",         L"Kilometers"},
  {  8,     L"Microinches",        L"Microinches"},
  {  9,     L"Mils",               L"Mils"},
  { 10,     L"Yards",              L"Yards"},
  { 11,     L"Angstroms",          L"Angstroms"},
  { 12,     L"Nanometers",         L"Nanometers"},
  { 13,     L"Microns",            L"Microns"},
  { 14,     L"Decimeters",         L"Decimeters"},
  { 15,     L"Decameters",         L"Decameters"},
  { 16,     L"Hectometers",        L"Hectometers"},
  { 17,     L"Gigameters",         L"Gigameters"},
  { 18,     L"AstronomicalUnits",  L"Astronomical units"},
  { 19,     L"LightYears",         L"Light years"},
  { 20,     L"Parsecs",            L"Parsecs"},
  { 21,     L"SurveyFeet",         L"US survey feet"},
  { 22,     L"SurveyInches",       L"US survey inches"},
  { 23,     L"SurveyYards",        L"US survey yards"},
  { 24,     L"SurveyMiles",        L"US survey miles"},
};
constexpr UserType insertUnits = {L"VeltInsertUnits", L"Unit that a block is drawn in.", VT_I4, insertUnitsMembers};
// clang-format on

// One that repeats its block in rows and columns has a marker of its own in place of the usual one.
constexpr const char* reference = "*";

std::wstring getName(const Subject& subject) {
  return subject.lens().name(2, reference);
}

// Of a dynamic block: what the user calls it, not the block that was made for this reference.
std::wstring getEffectiveName(const Subject& subject) {
  const database::TableEntry* original = database::originalBlock(subject.drawing(), subject.record());
  return original == nullptr ? getName(subject) : original->name;
}

bool getHasAttributes(const Subject& subject) {
  return subject.drawing().members(subject.record()).count > 0;
}

std::int32_t getInsertUnits(const Subject& subject) {
  const database::TableEntry* block = database::referredBlock(subject.drawing(), subject.record());
  if (block == nullptr || block->isImplied()) return 0;
  const std::int64_t unit =
      database::Lens(subject.drawing(), block->record).integer(70, "AcDbBlockTableRecord", 0);
  return memberOr(insertUnits, unit, 0);
}

// --- the attributes, which are placed on their own, have to follow ---

void putInsertionPoint(const Subject& subject, const Vector3& place) {
  const ObjectFrame frame = frameOf(subject.lens(), reference);
  const Vector3 before = frame.toWorld(pointAt(subject.lens(), 10, reference));
  if (before == place) return;
  Editor(subject).point(10, reference, frame.toObject(place));
  moveAttachedTexts(subject, place - before);
}

void putRotation(const Subject& subject, const double& angle) {
  const double before = radians(subject.lens().real(50, reference, 0));
  const double after = normalizedAngle(angle);
  if (normalizedAngle(before) == after) return;
  Editor(subject).real(50, reference, storedDegreesOf(after));
  turnAttachedTexts(subject, pointAt(subject.lens(), 10, reference), after - before);
}

template <int Code>
void putScale(const Subject& subject, const double& scale) {
  if (subject.lens().real(Code, reference, 1) == scale) return;
  if (hasAttachedTexts(subject)) {
    throw Refusal(E_FAIL, L"The attributes of the block reference would have to be stretched with it.");
  }
  Editor(subject).real(Code, reference, scale);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name               label              type             category                   access                                                           writability                                        choices               weight help
  {  1, L"InsertionPoint", L"Position",       VT_VARIANT,      Category::Geometry,        writtenBy<putInsertionPoint>(objectPoint(10, reference)),        writable,                                          Choices::None,        110,   L"Where the base point of the block is."},
  {  2, L"XScaleFactor",   L"Scale X",        types::noUnits,  Category::Geometry,        writtenBy<putScale<41>>(storedReal(41, reference, 1)).notZero(), writable,                                          Choices::None,        120,   L"Scale along the block's X axis; one with attributes keeps its scale."},
  {  3, L"YScaleFactor",   L"Scale Y",        types::noUnits,  Category::Geometry,        writtenBy<putScale<42>>(storedReal(42, reference, 1)).notZero(), writable,                                          Choices::None,        130,   L"Scale along the block's Y axis; one with attributes keeps its scale."},
  {  4, L"ZScaleFactor",   L"Scale Z",        types::noUnits,  Category::Geometry,        writtenBy<putScale<43>>(storedReal(43, reference, 1)).notZero(), writable,                                          Choices::None,        140,   L"Scale along the block's Z axis; one with attributes keeps its scale."},
  {  5, L"Name",           L"Block",          VT_BSTR,         Category::Misc,            computed<getName>(),                                             readOnly(reasons::attributesBelongToBlock),        Choices::None,        150,   L"Name of the block as the drawing stores it."},
  {  6, L"EffectiveName",  L"Name",           VT_BSTR,         Category::Misc,            computed<getEffectiveName>(),                                    readOnly(reasons::asTheName),                      Choices::None,        160,   L"Of a dynamic block: its own name, not the one made for this reference."},
  {  7, L"Rotation",       L"Rotation",       types::angle,    Category::Misc,            writtenBy<putRotation>(storedDirection(50, reference)),          writable,                                          Choices::None,        170,   L"Direction of the block's X axis in its plane."},
  {  8, L"InsUnits",       L"Block unit",     insertUnits,     Category::Misc,            computed<getInsertUnits>(),                                      readOnly(reasons::belongsToBlock),                 Choices::Enumeration, 180,   L"Unit that the block is drawn in."},
  {  9, L"HasAttributes",  L"Has attributes", VT_BOOL,         Category::Misc,            computed<getHasAttributes>(),                                    readOnly(reasons::followsFromThem),                Choices::None,        190,   L"Whether texts belong to this reference alone."},
  { 10, L"Columns",        L"Columns",        VT_I4,           Category::Misc,            storedInteger(70, reference, 1),                                 readOnly(reasons::anotherKindOfReference),         Choices::None,        200,   L"How often the block is repeated across."},
  { 11, L"Rows",           L"Rows",           VT_I4,           Category::Misc,            storedInteger(71, reference, 1),                                 readOnly(reasons::anotherKindOfReference),         Choices::None,        210,   L"How often the block is repeated upwards."},
  { 12, L"ColumnSpacing",  L"Column spacing", types::distance, Category::Misc,            storedReal(44, reference),                                       writable,                                          Choices::None,        220,   L"Distance of the columns."},
  { 13, L"RowSpacing",     L"Row spacing",    types::distance, Category::Misc,            storedReal(45, reference),                                       writable,                                          Choices::None,        230,   L"Distance of the rows."},
  { 14, L"Normal",         L"Normal",         VT_VARIANT,      Category::Visualization3D, computedPoint<getNormal>(),                                      readOnly(reasons::positionAndRotationWouldFollow), Choices::None,        240,   L"Upright on the block's plane."},
};
// clang-format on

}  // namespace
}  // namespace blockReferences

constinit const AutomationClass classes::VeltBlockReference = {
    .clsid = CLSID_VeltBlockReference,
    .name = L"VeltBlockReference",
    .label = L"Block Reference",
    .dxfName = "INSERT",
    .help = L"A placed block.",
    .general = &entityRows,
    .rows = blockReferences::rows,
};

}  // namespace velt::automation
