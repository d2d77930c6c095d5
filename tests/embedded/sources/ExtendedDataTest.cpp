#include "embedded/sources/ExtendedData.h"

#include <gtest/gtest.h>

#include "embedded/database/RecordEditor.h"
#include "tests/embedded/sources/Properties.h"

namespace velt::sources {
namespace {

using namespace test;
using Names = std::vector<std::wstring>;

Sample lineWith(Pairs extendedData) {
  Sample sample;
  sample.layer("Walls").layer("Locked", {{70, "4"}});
  sample.entity("LINE", {{8, "Walls"}, {10, "0.0"}, {11, "1.0"}});
  sample.append(database::test::text(extendedData));
  return sample;
}

class ExtendedDataTest : public testing::Test {
 protected:
  std::vector<Row> open(const Sample& sample) {
    line_.reset();
    drawing_ = sample.open();
    line_.emplace(*drawing_, 0);
    return rowsOf(*source_.get(), line_->dispatch());
  }
  std::vector<Row> openLine(Pairs extendedData) { return open(lineWith(extendedData)); }

  InterfaceHolder<IPropertySource> source_ = InterfaceHolder<IPropertySource>::owning(makeExtendedData());
  std::unique_ptr<Drawing> drawing_;
  std::optional<Bound> line_;
};

TEST_F(ExtendedDataTest, ValuesAreNamedByApplicationAndPlaceWithoutTheBraces) {
  const std::vector<Row> rows = openLine({{1001, "ACME"},
                                          {1000, "oak"},
                                          {1002, "{"},
                                          {1070, "3"},
                                          {1002, "}"},
                                          {1001, "Other Co"},
                                          {1040, "2.5"}});
  EXPECT_EQ((Names{L"ACME 1", L"ACME 2", L"Other Co 1"}), namesOf(rows));
  EXPECT_EQ(L"Extended Data", rows.at(0).heading());
  EXPECT_NE(L"", rows[0].help());
}

TEST_F(ExtendedDataTest, EveryKindOfValueHasItsType) {
  const std::vector<Row> rows = openLine({{1001, "ACME"},
                                          {1000, " oak "},
                                          {1003, "Walls"},
                                          {1004, "0A0B"},
                                          {1005, "2F"},
                                          {1010, "1.5"},
                                          {1020, "2"},
                                          {1030, "-3.0"},
                                          {1011, "1.0"},
                                          {1021, "2.0"},
                                          {1031, "3.0"},
                                          {1040, "2.5"},
                                          {1041, "3.5"},
                                          {1042, "4.5"},
                                          {1070, "-7"},
                                          {1071, "70000"}});
  ASSERT_EQ(11U, rows.size());
  const std::vector<std::wstring> texts{L" oak ", L"Walls", L"0A0B", L"2F", L"1.5,2,-3.0", L"1.0,2.0,3.0"};
  const std::vector<bool> readOnly{false, false, true, true, true, true};
  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(VT_BSTR, rows[i].type());
    EXPECT_EQ(texts[i], rows[i].text());
    EXPECT_EQ(readOnly[i], rows[i].isReadOnly()) << i;
  }
  EXPECT_EQ(2.5, rows[6].value().get().dblVal);
  EXPECT_EQ(3.5, rows[7].value().get().dblVal);
  EXPECT_EQ(4.5, rows[8].value().get().dblVal);
  EXPECT_EQ(VT_I2, rows[9].type());
  EXPECT_EQ(-7, rows[9].value().get().iVal);
  EXPECT_EQ(VT_I4, rows[10].type());
  EXPECT_EQ(70000, rows[10].value().get().lVal);
}

TEST_F(ExtendedDataTest, WhatTheProgramItselfKeepsIsLeftOut) {
  EXPECT_TRUE(openLine({{1001, "ACAD"},
                        {1000, "DSTYLE"},
                        {1001, "AcadAnnotative"},
                        {1070, "1"},
                        {1001, "AcDbBlockRepETag"},
                        {1070, "1"},
                        {1001, "GradientColor1ACI"},
                        {1070, "5"},
                        {1001, "PE_URL"},
                        {1000, "https://example.org"}})
                  .empty());
  EXPECT_TRUE(openLine({}).empty());
}

TEST_F(ExtendedDataTest, SettingAValueChangesItAndNothingElse) {
  const Sample sample = lineWith({{1001, "ACME"}, {1000, "oak"}, {1040, "2.50"}, {1070, "3"}, {1071, "4"}});
  const std::vector<Row> rows = open(sample);
  EXPECT_EQ(S_OK, rows.at(0).set(L"oak"));
  EXPECT_EQ(S_OK, rows[1].set(automation::test::number(2.5)));
  EXPECT_EQ(S_OK, rows[2].set(automation::test::integer(3)));
  EXPECT_EQ(0U, drawing_->revision()) << "they were that already";

  EXPECT_EQ(S_OK, rows[0].set(L"beech"));
  EXPECT_EQ(S_OK, rows[1].set(automation::test::integer(4)));
  EXPECT_EQ(S_OK, rows[2].set(automation::test::number(-5)));
  EXPECT_EQ(S_OK, rows[3].set(automation::test::integer(70000)));
  EXPECT_EQ(lineWith({{1001, "ACME"}, {1000, "beech"}, {1040, "4.0"}, {1070, "-5"}, {1071, "70000"}}).bytes(),
            drawing_->document().bytes());
  EXPECT_EQ(L"beech", rows[0].text());
}

TEST_F(ExtendedDataTest, ValuesOfAnotherKindOrTooLargeAreRefused) {
  const Sample sample =
      lineWith({{1001, "ACME"}, {1000, "oak"}, {1040, "2.5"}, {1070, "3"}, {1071, "4"}, {1005, "2F"}});
  const std::vector<Row> rows = open(sample);
  EXPECT_EQ(DISP_E_TYPEMISMATCH, rows.at(0).set(automation::test::number(1)));
  EXPECT_EQ(E_INVALIDARG, rows[0].set(std::wstring(256, L'x')));
  EXPECT_EQ(DISP_E_TYPEMISMATCH, rows[1].set(L"2.5"));
  EXPECT_EQ(DISP_E_TYPEMISMATCH, rows[2].set(automation::test::number(2.5)));
  EXPECT_EQ(DISP_E_OVERFLOW, rows[2].set(automation::test::integer(40000)));
  EXPECT_EQ(DISP_E_OVERFLOW, rows[3].set(automation::test::number(1e12)));
  EXPECT_EQ(E_ACCESSDENIED, rows[4].set(L"30"));
  EXPECT_EQ(sample.bytes(), drawing_->document().bytes());
  EXPECT_EQ(S_OK, rows[0].set(std::wstring(255, L'x')));
}

TEST_F(ExtendedDataTest, ANameOfALayerMustBeOneThatTheDrawingHas) {
  const std::vector<Row> rows = openLine({{1001, "ACME"}, {1003, "Walls"}});
  EXPECT_EQ(E_INVALIDARG, rows.at(0).set(L"Roof"));
  EXPECT_EQ(S_OK, rows[0].set(L"WALLS"));
  EXPECT_EQ(0U, drawing_->revision());
  EXPECT_EQ(S_OK, rows[0].set(L"locked"));
  EXPECT_EQ(L"Locked", rows[0].text()) << "as the table spells it";
}

TEST_F(ExtendedDataTest, EntitiesOnLockedLayersAreNotWritten) {
  Sample sample;
  sample.layer("Locked", {{70, "4"}}).entity("LINE", {{8, "Locked"}, {1001, "ACME"}, {1000, "oak"}});
  const std::vector<Row> rows = open(sample);
  EXPECT_EQ(L"oak", rows.at(0).text());
  EXPECT_EQ(E_ACCESSDENIED, rows[0].set(L"beech"));
  EXPECT_EQ(sample.bytes(), drawing_->document().bytes());
}

TEST_F(ExtendedDataTest, AValueIsFoundAgainAfterTheEntityWasEdited) {
  const std::vector<Row> rows = openLine({{1001, "ACME"}, {1000, "oak"}, {1000, "ash"}});
  database::RecordEditor(*drawing_, database::test::entityRecord(*drawing_)).setReal(39, "AcDbLine", 2.0);
  EXPECT_EQ(L"ash", rows.at(1).text());
  EXPECT_EQ(L"oak", rows[0].text());
}

TEST_F(ExtendedDataTest, ThousandsOfValuesAreReadInOrder) {
  Sample sample = lineWith({{1001, "ACME"}});
  constexpr int many = 5000;
  std::string values;
  for (int i = 0; i < many; ++i)
    values += database::test::text({{1071, std::to_string(i)}});
  sample.append(values);
  const std::vector<Row> rows = open(sample);
  ASSERT_EQ(static_cast<std::size_t>(many), rows.size());
  for (int i = 0; i < many; ++i)
    ASSERT_EQ(i, rows[static_cast<std::size_t>(i)].value().get().lVal);
}

TEST_F(ExtendedDataTest, NothingIsKeptOutOfBalance) {
  static_cast<void>(openLine({{1001, "ACME"}, {1000, "oak"}}));
  line_.reset();
  const com::Balance balance;
  EXPECT_EQ(L"oak", openLine({{1001, "ACME"}, {1000, "oak"}}).at(0).text());
  line_.reset();
}

TEST_F(ExtendedDataTest, NoEntityHasNoRows) {
  VariantHolder properties;
  EXPECT_EQ(E_INVALIDARG, source_->GetProperties(nullptr, properties.put()));
  const auto drawing = Sample().entity("LINE").open();
  const Bound line(*drawing, 0);
  EXPECT_EQ(E_POINTER, source_->GetProperties(&line.dispatch(), nullptr));
}

}  // namespace
}  // namespace velt::sources
