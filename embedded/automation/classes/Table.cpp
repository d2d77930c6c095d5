#include <cstdint>
#include <numeric>
#include <string>
#include <vector>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Access.h"
#include "embedded/database/NamedObjects.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace tables {
namespace {

using platform::Category;

// clang-format off
constexpr EnumMember flowDirectionMembers[] = {
  // value  name               label
  { 0,      L"Down",           L"Down"},
  { 1,      L"Up",             L"Up"},
};
constexpr UserType flowDirection = {L"VeltFlowDirection", L"Which way the rows of a table follow each other.", VT_I4, flowDirectionMembers};
// clang-format on

constexpr const char* reference = "AcDbBlockReference";
constexpr const char* table = "AcDbTable";

std::wstring getStyleName(const Subject& subject) {
  const std::wstring name = database::objectName(subject.drawing(), subject.lens().handle(342, table));
  return name.empty() ? std::wstring(L"Standard") : name;
}

double sumOf(const Subject& subject, int code) {
  const std::vector<double> parts = subject.lens().reals(code, table);
  return std::accumulate(parts.begin(), parts.end(), 0.0);
}

double getWidth(const Subject& subject) {
  return sumOf(subject, 142);
}

double getHeight(const Subject& subject) {
  return sumOf(subject, 141);
}

Vector3 getDirectionVector(const Subject& subject) {
  return direction(pointAt(subject.lens(), 11, table, {1, 0, 0}), {1, 0, 0});
}

std::int32_t getFlowDirection(const Subject& subject) {
  return subject.lens().integer(70, table, 0) == 1 ? 1 : 0;
}

std::wstring getTitle(const Subject& subject) {
  return subject.lens().text(1, table);
}

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                label                type             category            access                               writability                               choices               weight help
  {  1, L"StyleName",       L"Table style",      VT_BSTR,         Category::Table,    computed<getStyleName>(),            readOnly(reasons::tableLooksStored),      Choices::None,        110,   L"Name of the style."},
  {  2, L"Rows",            L"Rows",             VT_I4,           Category::Table,    storedInteger(91, table),            readOnly(reasons::theirCellsWouldBeMade), Choices::None,        120,   L"How many rows there are."},
  {  3, L"Columns",         L"Columns",          VT_I4,           Category::Table,    storedInteger(92, table),            readOnly(reasons::theirCellsWouldBeMade), Choices::None,        130,   L"How many columns there are."},
  {  4, L"FlowDirection",   L"Direction",        flowDirection,   Category::Table,    computed<getFlowDirection>(),        readOnly(reasons::tableLooksStored),      Choices::Enumeration, 140,   L"Which way the rows follow each other."},
  {  5, L"Width",           L"Table width",      types::distance, Category::Table,    computed<getWidth>(),                readOnly(reasons::followsFromThem),       Choices::None,        150,   L"Of all columns."},
  {  6, L"Height",          L"Table height",     types::distance, Category::Table,    computed<getHeight>(),               readOnly(reasons::followsFromThem),       Choices::None,        160,   L"Of all rows."},
  {  7, L"FirstCell",       L"First cell",       VT_BSTR,         Category::Cell,     computed<getTitle>(),                readOnly(reasons::tableLooksStored),      Choices::None,        170,   L"Text of the first cell that has one."},
  {  8, L"InsertionPoint",  L"Position",         VT_VARIANT,      Category::Geometry, worldPoint(10, reference),           readOnly(reasons::storedSeveralTimes),    Choices::None,        180,   L"Upper left corner of the table."},
  {  9, L"DirectionVector", L"Direction vector", VT_VARIANT,      Category::Geometry, computedPoint<getDirectionVector>(), readOnly(reasons::tableLooksStored),      Choices::None,        190,   L"Direction of the rows."},
};
// clang-format on

}  // namespace
}  // namespace tables

constinit const AutomationClass classes::VeltTable = {
    .clsid = CLSID_VeltTable,
    .name = L"VeltTable",
    .label = L"Table",
    .dxfName = "ACAD_TABLE",
    .help = L"Cells in rows and columns.",
    .general = &entityRows,
    .rows = tables::rows,
};

}  // namespace velt::automation
