#include "tool/RowJson.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "embedded/database/Drawing.h"
#include "tests/tool/Drawings.h"

namespace velt::tool {
namespace {

using namespace velt::tests;
using velt::database::Drawing;
using velt::palette::PlainValue;
using velt::palette::Row;
using OrderedJson = nlohmann::ordered_json;

PROPINFO record() {
  PROPINFO made;
  made.clsid = GUID{0x01020304, 0x0506, 0x0708, {9, 10, 11, 12, 13, 14, 15, 16}};
  made.dispId = 4;
  made.customType = PropertyKind::none;
  made.displayName = L"a\nb";
  made.value.vt = VT_R8;
  made.value.dblVal = 1.5;
  return made;
}

OrderedJson made(const PROPINFO& row, RowFields fields = RowFields::all,
                 const palette::NumberStyle& style = {}) {
  const auto drawing = Drawing::parse(drawingOf({{"0"}}, ""), "house.dxf");
  return rowJson(Row(row), style, Units(*drawing), fields);
}

std::vector<std::string> namesIn(const OrderedJson& json) {
  std::vector<std::string> names;
  for (const auto& [name, value] : json.items())
    names.push_back(name);
  return names;
}

TEST(RowJson, AValueIsTheNaturalOne) {
  EXPECT_EQ(valueJson(PlainValue()), OrderedJson(nullptr));
  EXPECT_EQ(valueJson(true), OrderedJson(true));
  EXPECT_EQ(valueJson(std::int64_t{-5}), OrderedJson(-5));
  EXPECT_EQ(valueJson(std::uint64_t{18446744073709551615ULL}).dump(), "18446744073709551615");
  EXPECT_EQ(valueJson(1.5), OrderedJson(1.5));
  EXPECT_EQ(valueJson(std::string("x")), OrderedJson("x"));
}

TEST(RowJson, HasEveryFieldOfTheRecordUnderItsOwnNameAndItsText) {
  const PROPINFO row = record();
  const std::vector<std::string> expected = {
      "clsid",       "pDispatch",        "dispId",       "name",         "description",   "displayName",
      "value",       "categoryId",       "categoryName", "isElement",    "elementCookie", "hasChoices",
      "choiceNames", "choiceValues",     "isWritable",   "isEditable",   "isVaries",      "customType",
      "groupCount",  "elementGrouping",  "weight",       "sortByCookie", "objectId",      "valueType",
      "hasValue",    "pDynamicProperty", "dynSources",   "choiceReals",  "text",          "unit",
      "isDynamic"};
  const OrderedJson json = made(row, RowFields::all, {3, 1});
  EXPECT_EQ(namesIn(json), expected);
  EXPECT_EQ(json["clsid"], "01020304-0506-0708-090A-0B0C0D0E0F10");
  EXPECT_EQ(json["displayName"], "a\nb");
  EXPECT_EQ(json["value"], 1.5);
  EXPECT_EQ(json["text"], "1.500");
  EXPECT_EQ(json["pDispatch"], nullptr);
  EXPECT_EQ(json["dynSources"], OrderedJson::array());
}

TEST(RowJson, HasWhatMeansSomethingToPeopleUnlessEveryFieldIsAskedFor) {
  PROPINFO row = record();
  row.customType = PropertyKind::distance;
  const std::vector<std::string> expected = {"name",         "description", "displayName", "value",
                                             "categoryName", "hasChoices",  "choiceNames", "choiceValues",
                                             "isEditable",   "isVaries",    "choiceReals", "text",
                                             "unit",         "isDynamic"};
  const OrderedJson json = made(row, RowFields::known);
  EXPECT_EQ(namesIn(json), expected);
  EXPECT_EQ(json["unit"], "drawing units");
  row.customType = PropertyKind::noUnits;
  EXPECT_EQ(made(row, RowFields::known)["unit"], nullptr);
}

TEST(RowJson, AVaryingRowSaysSoAndHasNoValue) {
  PROPINFO row = record();
  row.isVaries = true;
  EXPECT_EQ(made(row)["value"], nullptr) << "that of the first entity misleads";
  EXPECT_EQ(made(row)["text"], "*VARIES*");
}

TEST(RowJson, AnEntityIsToldByItsHandle) {
  const auto drawing = Drawing::parse(drawingOf({{"0"}}, line("2F", "0")), "house.dxf");
  PROPINFO row = record();
  row.objectId = drawing->entities()[0];
  row.dynSources.append(DispatchDynPropSourceNode());
  const OrderedJson json = made(row);
  EXPECT_EQ(json["objectId"], "2F");
  EXPECT_EQ(json["dynSources"].dump(), R"([{"pDispatch":null,"pDynamicProperty":false}])");
}

TEST(RowJson, ADynamicPropertySaysSo) {
  PROPINFO row = record();
  EXPECT_EQ(made(row)["isDynamic"], false);
  row.dispId = dynamicPropertyDispId;
  EXPECT_EQ(made(row)["isDynamic"], true);
  EXPECT_EQ(made(row, RowFields::known)["isDynamic"], true);
}

TEST(RowJson, ChoicesAreInTheirOrder) {
  PROPINFO row = record();
  for (const wchar_t* const choice : {L"solid", L"T\u00FCr", L"a\nb"})
    row.choiceNames.push_back(choice);
  EXPECT_EQ(made(row)["choiceNames"].dump(), "[\"solid\",\"T\u00FCr\",\"a\\nb\"]");
  EXPECT_EQ(made(row, RowFields::known)["choiceValues"].dump(), "[]");
}

}  // namespace
}  // namespace velt::tool
