#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "palette/Palette.h"
#include "tests/support/Row.h"

namespace velt::palette {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using ToyRow = toys::Row;

// Rows over the records.
std::vector<Row> over(const TqVector<PROPINFO>& records) {
  std::vector<Row> rows;
  for (const PROPINFO& record : records)
    rows.emplace_back(record);
  return rows;
}

std::vector<std::string> labelsOf(const std::vector<Row>& rows) {
  std::vector<std::string> labels;
  for (const Row& row : rows)
    labels.push_back(row.label());
  return labels;
}

}  // namespace

TEST(Row, ItsTextsStandOnOneLine) {
  PROPINFO record = ToyRow(L"Name").label(L"two\nlines").inCategory(3, L"tab\there");
  record.description = L"help\r\nme";
  const Row row(record);
  EXPECT_EQ(row.label(), "two\xE2\x86\xB5lines");
  EXPECT_EQ(row.name(), "Name");
  EXPECT_EQ(row.help(), "help\xE2\x86\xB5me");
  EXPECT_EQ(row.categoryName(), "tab here");
  EXPECT_EQ(row.categoryId(), 3);
}

TEST(Row, ItsKindTellsThePaletteWhichEditorToTake) {
  const PROPINFO record = ToyRow(L"Rotation").customType(PropertyKind::angle);
  EXPECT_EQ(Row(record).kind(), PropertyKind::angle);
}

TEST(Row, ItsKindTellsTheUnitOfItsNumbers) {
  const auto unitOf = [](PropertyKind::Code kind) {
    const PROPINFO record = ToyRow(L"Toy").customType(kind);
    return Row(record).unit();
  };
  EXPECT_EQ(unitOf(PropertyKind::distance), Unit::length);
  EXPECT_EQ(unitOf(PropertyKind::hatchSpacing), Unit::length);
  EXPECT_EQ(unitOf(PropertyKind::area), Unit::area);
  EXPECT_EQ(unitOf(PropertyKind::shapeArea), Unit::area);
  EXPECT_EQ(unitOf(PropertyKind::hatchAngle), Unit::angle);
  EXPECT_EQ(unitOf(PropertyKind::lineweight), Unit::hundredthOfMillimetre);
  EXPECT_EQ(unitOf(PropertyKind::entityLineweight), Unit::hundredthOfMillimetre);
  EXPECT_EQ(unitOf(PropertyKind::noUnits), Unit::none);
  EXPECT_EQ(unitOf(PropertyKind::number), Unit::none);
}

TEST(Row, AChoiceHasTheNumberThatIsWrittenForIt) {
  PROPINFO record = ToyRow(L"Style").choice(L"solid", 10).choice(L"dashed", 20);
  record.choiceNames.push_back(L"by name alone");
  record.choiceReals.push_back(1.5);
  const std::vector<Choice> choices = Row(record).choices();
  ASSERT_EQ(choices.size(), 3U);
  EXPECT_EQ(choices[0].label, "solid");
  EXPECT_EQ(choices[0].integer, 10);
  EXPECT_EQ(choices[0].real, 1.5);
  EXPECT_EQ(choices[1].integer, 20);
  EXPECT_EQ(choices[1].real, std::nullopt);
  EXPECT_EQ(choices[2].label, "by name alone");
  EXPECT_EQ(choices[2].integer, std::nullopt);
}

TEST(Row, TellsWhatStandsAgainstEditing) {
  const PROPINFO editable = ToyRow(L"A");
  const PROPINFO never = ToyRow(L"A").readOnly();
  const PROPINFO notNow = ToyRow(L"A").editable(false);
  toys::ToyHost host;
  const toys::ToyObject property(host, "property");
  const PROPINFO dynamic = ToyRow(L"A").readOnly().dynamic(property.unknown());
  EXPECT_EQ(Row(editable).editability(), Editability::editable);
  EXPECT_EQ(Row(never).editability(), Editability::neverWritable);
  EXPECT_EQ(Row(notNow).editability(), Editability::notNow);
  EXPECT_EQ(Row(dynamic).editability(), Editability::notNow) << "its source says so, not its class";
  EXPECT_TRUE(Row(dynamic).isDynamic());
}

TEST(Rows, CategoriesOfOnePlaceStandAsTheirFirstRowsStood) {
  const auto records =
      toys::rows({ToyRow(L"Color").inCategory(1, L"General"), ToyRow(L"Radius").inCategory(2, L"Geometry"),
                  ToyRow(L"Layer").inCategory(1, L"General"), ToyRow(L"NUMBER").inCategory(1, L"Attributes"),
                  ToyRow(L"Area").inCategory(2, L"Geometry")});
  const std::vector<Category> categories = byCategory(over(records));
  ASSERT_EQ(categories.size(), 3U);
  EXPECT_EQ(categories[0].name, "General");
  EXPECT_EQ(categories[0].id, 1);
  EXPECT_THAT(labelsOf(categories[0].rows), ElementsAre("Color", "Layer"));
  EXPECT_THAT(labelsOf(categories[1].rows), ElementsAre("Radius", "Area"));
  EXPECT_EQ(categories[2].name, "Attributes")
      << "another name is another category, though the number be the same";
}

TEST(Rows, GeneralComesFirstAndMiscLastWhicheverRowIsFirst) {
  constexpr int attributes = -22, misc = -2, geometry = -13, general = -12, ofPlugIn = 70;
  const auto records = toys::rows({ToyRow(L"NUMBER").inCategory(attributes, L"Attributes"),
                                   ToyRow(L"Wood").inCategory(ofPlugIn, L"Material"),
                                   ToyRow(L"Handle").inCategory(misc, L"Misc"),
                                   ToyRow(L"Radius").inCategory(geometry, L"Geometry"),
                                   ToyRow(L"Color").inCategory(general, L"General")});
  std::vector<std::string> names;
  for (const Category& category : byCategory(over(records)))
    names.push_back(category.name);
  EXPECT_THAT(names, ElementsAre("General", "Geometry", "Attributes", "Material", "Misc"));
}

TEST(Rows, AreFoundByTheirLabelBeforeTheirName) {
  const auto records = toys::rows(
      {ToyRow(L"Layer").label(L"X"), ToyRow(L"LayerName").label(L"Layer"), ToyRow(L"Third").label(L"layer")});
  const std::vector<Row> rows = over(records);
  EXPECT_THAT(labelsOf(rowsNamed(rows, "LAYER")), ElementsAre("Layer", "layer"));
  EXPECT_THAT(labelsOf(rowsNamed(rows, "layername")), ElementsAre("Layer"));
  EXPECT_THAT(rowsNamed(rows, "Color"), IsEmpty());
}

}  // namespace velt::palette
