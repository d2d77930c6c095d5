#include "tool/ValuesFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/Files.h"
#include "tool/Failure.h"

namespace velt::tool {
namespace {

using palette::PlainValue;
using testing::ElementsAre;
using testing::HasSubstr;

ValuesFile valuesOf(const std::string& text) {
  return parseValuesFile(text, "values.json");
}

std::string failureOfValues(const std::string& text) {
  try {
    valuesOf(text);
  } catch (const Failure& failure) {
    return failure.what();
  }
  return "no failure";
}

TEST(ValuesFile, OfATableEachLineIsAnEntity) {
  const ValuesFile file = valuesOf(
      R"({"handle":"2F","class":"Line","values":{"Layer":"0","Vertex X":[0,1.5],"@type":"LINE","Gone":null}})"
      "\n\n"
      R"({"handle":"30","class":"Line","values":{"Closed":true}})"
      "\n");
  ASSERT_EQ(file.entities.size(), 2U);
  EXPECT_FALSE(file.isOfSelection);
  EXPECT_EQ(file.entities[0].handle, "2F");
  ASSERT_EQ(file.entities[0].values.size(), 2U) << "neither facts nor what the entity lacks";
  EXPECT_EQ(file.entities[0].values[1].name, "Vertex X");
  EXPECT_THAT(file.entities[0].values[1].values, ElementsAre(PlainValue(std::int64_t{0}), PlainValue(1.5)));
  EXPECT_EQ(file.entities[1].values[0].values[0], PlainValue(true));
}

TEST(ValuesFile, OneLineIsATableToo) {
  EXPECT_EQ(valuesOf(R"({"handle":"2F","values":{"Layer":"0"}})").entities.size(), 1U);
}

TEST(ValuesFile, OfAListTheRowsOfOneNameBelongTogether) {
  const ValuesFile file = valuesOf(R"({"entities":[{"handle":"2F","values":[
      {"name":"Vertex","displayName":"Vertex X","value":1},
      {"name":"Vertex","displayName":"Vertex Y","value":2},
      {"name":"Vertex","displayName":"Vertex X","value":null}]}]})");
  ASSERT_EQ(file.entities.size(), 1U);
  ASSERT_EQ(file.entities[0].values.size(), 2U);
  EXPECT_EQ(file.entities[0].values[0].label, "Vertex X");
  EXPECT_THAT(file.entities[0].values[0].values, ElementsAre(PlainValue(std::int64_t{1}), PlainValue()));
}

TEST(ValuesFile, OfAShownSelectionWhatVariesHasNoValue) {
  const ValuesFile file = valuesOf(R"({"rows":[
      {"name":"Layer","displayName":"Layer","value":"0","isVaries":true},
      {"name":"Radius","displayName":"Radius","value":2.5,"isVaries":false}]})");
  EXPECT_TRUE(file.isOfSelection);
  EXPECT_EQ(file.ofSelection[0].values[0], PlainValue());
  EXPECT_EQ(file.ofSelection[1].values[0], PlainValue(2.5));
}

TEST(ValuesFile, ValuesHaveTheUnitsThatTheFileNames) {
  const WantedValues ofTable =
      valuesOf(
          R"({"handle":"2F","values":{"Vertex X":[0,1]},"units":{"Vertex X":"inches","Other":"radians"}})")
          .entities[0]
          .values[0];
  EXPECT_THAT(ofTable.units, ElementsAre("inches", "inches"));
  const WantedValues mixed =
      valuesOf(R"({"handle":"2F","values":{"A":[0,1]},"units":{"A":["inches",null]}})").entities[0].values[0];
  EXPECT_THAT(mixed.units, ElementsAre("inches", ""));
  const WantedValues ofList = valuesOf(R"({"entities":[{"handle":"2F","values":[
      {"name":"A","displayName":"A","value":1,"unit":"radians"},
      {"name":"A","displayName":"A","value":2,"unit":null},
      {"name":"A","displayName":"A","value":3}]}]})")
                                  .entities[0]
                                  .values[0];
  EXPECT_THAT(ofList.units, ElementsAre("radians", "", ""));
  EXPECT_THAT(failureOfValues(R"({"handle":"2F","values":{"A":0},"units":{"A":7}})"),
              HasSubstr("the unit of A is not a text"));
}

TEST(ValuesFile, WhatIsNoneOfTheFormsIsNamed) {
  EXPECT_THAT(failureOfValues("[1]"),
              HasSubstr("values.json: \"entities\" is missing (what \"table --json\""));
  EXPECT_THAT(failureOfValues("hello"), HasSubstr("values.json: line 1: not JSON"));
  EXPECT_THAT(failureOfValues("{\"handle\":\"2F\",\"values\":{}}\n{\"handle\":7,\"values\":{}}"),
              HasSubstr("line 2: \"handle\" is not a text"));
  EXPECT_THAT(failureOfValues(R"({"handle":"2F","values":{"Layer":{}}})"),
              HasSubstr("the value of Layer is not a number, a text, true, false or null"));
  EXPECT_THAT(failureOfValues(R"({"handle":"2F"})"), HasSubstr("\"values\" is missing"));
  EXPECT_THAT(failureOfValues(R"({"entities":7})"), HasSubstr("\"entities\" is not a list"));
  EXPECT_THAT(failureOfValues(R"({"rows":7})"), HasSubstr("the values are not a list"));
}

TEST(ValuesFile, TheNamesAreThoseThatWereWrittenBeforeTheyAreLookedForInOtherWays) {
  std::vector<PROPINFO> records(3);
  const auto name = [&](std::size_t place, const wchar_t* own, const wchar_t* label) {
    records[place].name = own;
    records[place].displayName = label;
  };
  name(0, L"Alpha", L"Name");
  name(1, L"Beta", L"Name");
  name(2, L"Gamma", L"beta");
  const std::vector<palette::Row> rows(records.begin(), records.end());
  const auto found = [&](const char* wanted) {
    std::vector<std::string> names;
    for (const palette::Row& row : rowsFor({.name = wanted}, rows))
      names.push_back(row.name());
    return names;
  };
  EXPECT_THAT(found("Name"), ElementsAre("Alpha"));
  EXPECT_THAT(found("Beta"), ElementsAre("Beta")) << "as \"table\" names the second row of that label";
  EXPECT_THAT(found("beta"), ElementsAre("Gamma"));
  EXPECT_THAT(found("BETA"), ElementsAre("Gamma"))
      << "which nothing prints, so it is meant like a name on the command line";
  EXPECT_THAT(found("Delta"), ElementsAre());
}

TEST(ValuesFile, AFileThatIsNotThereIsNamed) {
  try {
    readValuesFile("/nowhere/values.json");
    FAIL() << "a missing file was read";
  } catch (const Failure& failure) {
    EXPECT_STREQ(failure.what(), "/nowhere/values.json: cannot be read");
  }
}

TEST(ValuesFile, FactsAndWhatIsMissingMayStandAnywhere) {
  const ValuesFile file = valuesOf(R"({"handle":"2F","values":{"@type":"LINE","Gone":null,"Layer":"0",)"
                                   R"("@layer":"0","Color":7}})");
  ASSERT_EQ(file.entities[0].values.size(), 2U);
  EXPECT_EQ(file.entities[0].values[0].name, "Layer");
  EXPECT_EQ(file.entities[0].values[1].name, "Color");
}

TEST(ValuesFile, WithoutAUnitForItAValueHasNone) {
  const ValuesFile file = valuesOf(R"({"handle":"2F","values":{"A":1,"B":[2,3],"C":[4,5,6],"D":[7,8]},)"
                                   R"("units":{"A":"inches","C":["inches","feet"],"D":["a","b","c"]}})");
  const std::vector<WantedValues>& values = file.entities[0].values;
  EXPECT_THAT(values[0].units, ElementsAre("inches"));
  EXPECT_THAT(values[1].units, ElementsAre("", ""));
  EXPECT_THAT(values[2].units, ElementsAre("inches", "feet", ""));
  EXPECT_THAT(values[3].units, ElementsAre("a", "b"));
}

TEST(ValuesFile, OfAListEveryEntityAndEveryValueIsRead) {
  const ValuesFile file = valuesOf(R"({"entities":[
      {"handle":"2F","values":[{"name":"A","displayName":"A","value":18446744073709551615}]},
      {"handle":"30","values":[{"name":"A","displayName":"A","value":-3,"isVaries":false},
                               {"name":"B","displayName":"A","value":"x","isVaries":true}]},
      {"handle":"31","values":[]}]})");
  ASSERT_EQ(file.entities.size(), 3U);
  EXPECT_THAT(file.entities[0].values[0].values,
              ElementsAre(PlainValue(std::uint64_t{18446744073709551615U})));
  ASSERT_EQ(file.entities[1].values.size(), 2U) << "another property with that label";
  EXPECT_THAT(file.entities[1].values[0].values, ElementsAre(PlainValue(std::int64_t{-3})));
  EXPECT_EQ(file.entities[1].values[1].name, "B");
  EXPECT_THAT(file.entities[1].values[1].values, ElementsAre(PlainValue()));
  EXPECT_EQ(file.entities[2].handle, "31");
  EXPECT_TRUE(valuesOf("").entities.empty());
}

TEST(ValuesFile, AValueWithItsLabelIsForTheRowsThatHaveBothNames) {
  std::vector<PROPINFO> records(4);
  const auto name = [&](std::size_t place, const wchar_t* own, const wchar_t* label) {
    records[place].name = own;
    records[place].displayName = label;
  };
  name(0, L"Vertex", L"Vertex X");
  name(1, L"Vertex", L"Vertex Y");
  name(2, L"Other", L"Vertex X");
  name(3, L"Vertex", L"Vertex X");
  const std::vector<palette::Row> rows(records.begin(), records.end());
  const auto found = [&](const WantedValues& wanted) {
    std::vector<std::ptrdiff_t> places;
    for (const palette::Row& row : rowsFor(wanted, rows))
      places.push_back(&row.record() - records.data());
    return places;
  };
  EXPECT_THAT(found({.name = "Vertex", .label = "Vertex X"}), ElementsAre(0, 3));
  EXPECT_THAT(found({.name = "Vertex", .label = "Vertex Y"}), ElementsAre(1));
  EXPECT_THAT(found({.name = "Other", .label = "Vertex Y"}), ElementsAre());
  EXPECT_THAT(found({.name = "Vertex X"}), ElementsAre(0, 3)) << "as \"table\" names them";
}

}  // namespace
}  // namespace velt::tool
