#include "embedded/sources/BlockAttributes.h"

#include <gtest/gtest.h>

#include "tests/embedded/sources/Properties.h"

namespace velt::sources {
namespace {

using namespace test;
using Names = std::vector<std::wstring>;

std::string attribute(const std::string& handle, const std::string& tag, const std::string& text,
                      const std::string& flags = "0", const std::string& layer = "0") {
  return record("ATTRIB", {{5, handle},
                           {100, "AcDbEntity"},
                           {8, layer},
                           {100, "AcDbText"},
                           {10, "0.0"},
                           {1, text},
                           {100, "AcDbAttribute"},
                           {2, tag},
                           {70, flags}});
}

std::string definition(const std::string& handle, const std::string& tag, const std::string& prompt) {
  return record("ATTDEF", {{5, handle},
                           {100, "AcDbEntity"},
                           {8, "0"},
                           {100, "AcDbText"},
                           {1, "?"},
                           {100, "AcDbAttributeDefinition"},
                           {3, prompt},
                           {2, tag},
                           {70, "0"}});
}

// Adds a reference with its attributes.
void addReference(Sample& sample, Pairs pairs, const std::string& attributes) {
  sample.entity("INSERT", pairs);
  sample.append(attributes + record("SEQEND", {}));
}

Sample doors() {
  Sample sample;
  sample.layer("Locked", {{70, "4"}})
      .layer("0")
      .tableRecord("BLOCK_RECORD", {{5, "A0"}, {2, "Door"}})
      .tableRecord("BLOCK_RECORD",
                   {{5, "A1"}, {2, "*U1"}, {1001, "AcDbBlockRepBTag"}, {1070, "1"}, {1005, "A0"}})
      .block({{5, "B0"}, {330, "A0"}, {2, "Door"}},
             definition("C0", "NUMBER", "Number of the door") + definition("C1", "FIRE", "Rating"))
      .block({{5, "B1"}, {330, "A1"}, {2, "*U1"}});
  return sample;
}

class BlockAttributesTest : public testing::Test {
 protected:
  [[nodiscard]] std::vector<Row> rows(const Bound& entity) const {
    return rowsOf(*source_.get(), entity.dispatch());
  }

  InterfaceHolder<IPropertySource> source_ = InterfaceHolder<IPropertySource>::owning(makeBlockAttributes());
};

TEST_F(BlockAttributesTest, EachAttributeIsARowNamedByItsTagAndDescribedByThePrompt) {
  Sample sample = doors();
  addReference(sample, {{2, "Door"}, {66, "1"}},
               attribute("D0", "NUMBER", "D1") + attribute("D1", "FIRE", "T30") + attribute("D2", "X", ""));
  const auto drawing = sample.open();
  const Bound door(*drawing, 2);
  const std::vector<Row> found = rows(door);
  ASSERT_EQ((Names{L"NUMBER", L"FIRE", L"X"}), namesOf(found));
  EXPECT_EQ(L"Number of the door", found[0].help());
  EXPECT_EQ(L"Rating", found[1].help());
  EXPECT_EQ(L"", found[2].help()) << "a tag that the block does not know";
  EXPECT_EQ(L"D1", found[0].text());
  EXPECT_EQ(L"T30", found[1].text());
  EXPECT_EQ(L"", found[2].text());
  EXPECT_EQ(L"Attributes", found[0].heading());
  EXPECT_FALSE(found[0].isReadOnly());
}

TEST_F(BlockAttributesTest, OfTwoAttributesWithOneTagTheSecondIsNumbered) {
  Sample sample = doors();
  addReference(sample, {{2, "Door"}}, attribute("D0", "FIRE", "a") + attribute("D1", "FIRE", "b"));
  const auto drawing = sample.open();
  const Bound door(*drawing, 2);
  const std::vector<Row> found = rows(door);
  ASSERT_EQ((Names{L"FIRE", L"FIRE (2)"}), namesOf(found));
  EXPECT_EQ(L"b", found[1].text());
  EXPECT_EQ(L"Rating", found[1].help());
}

TEST_F(BlockAttributesTest, AnAnonymousBlockTakesThePromptsOfTheOneItWasMadeOf) {
  Sample sample = doors();
  addReference(sample, {{2, "*U1"}}, attribute("D0", "NUMBER", "D1"));
  const auto drawing = sample.open();
  EXPECT_EQ(L"Number of the door", rows(Bound(*drawing, 2)).at(0).help());
}

TEST_F(BlockAttributesTest, ReferencesOfOneBlockShareTheirProperties) {
  Sample sample = doors();
  addReference(sample, {{2, "Door"}}, attribute("D0", "NUMBER", "1"));
  addReference(sample, {{2, "*U1"}}, attribute("D1", "NUMBER", "2"));
  const auto drawing = sample.open();
  const Bound one(*drawing, 2);
  const Bound other(*drawing, 3);
  const std::vector<Row> ofOne = rows(one);
  const std::vector<Row> ofOther = rows(other);
  EXPECT_EQ(&ofOne.at(0).property(), &ofOther.at(0).property());
  EXPECT_EQ(L"1", ofOne[0].text());
  EXPECT_EQ(L"2", ofOther[0].text());
}

TEST_F(BlockAttributesTest, APropertyOutlivesTheDrawingAndThenServesTheNextOne) {
  IDynamicProperty2* borrowed = nullptr;
  Sample sample = doors();
  addReference(sample, {{2, "Door"}}, attribute("D0", "NUMBER", "1"));
  {
    const auto drawing = sample.open();
    const Bound door(*drawing, 2);
    borrowed = &rows(door).at(0).property();
  }
  const auto drawing = sample.open();
  const Bound door(*drawing, 2);
  EXPECT_EQ(L"1", Row(door.dispatch(), *borrowed).text());
}

TEST_F(BlockAttributesTest, EntitiesWithoutAttributesHaveNoRows) {
  const auto drawing = doors().entity("INSERT", {{2, "Door"}}).entity("LINE").open();
  EXPECT_TRUE(rows(Bound(*drawing, 2)).empty());
  EXPECT_TRUE(rows(Bound(*drawing, 3)).empty());
  VariantHolder properties;
  EXPECT_EQ(E_INVALIDARG, source_->GetProperties(nullptr, properties.put()));
  EXPECT_EQ(E_POINTER, source_->GetProperties(&Bound(*drawing, 2).dispatch(), nullptr));
}

TEST_F(BlockAttributesTest, AnAttributeIsDisabledForAReferenceThatLacksIt) {
  Sample sample = doors();
  addReference(sample, {{2, "Door"}}, attribute("D0", "NUMBER", "1"));
  addReference(sample, {{2, "Door"}}, attribute("D1", "FIRE", "2"));
  const auto drawing = sample.open();
  const Bound one(*drawing, 2);
  const Bound other(*drawing, 3);
  const Row number = std::move(rows(one).at(0));
  EXPECT_TRUE(number.isEnabledFor(one.dispatch()));
  EXPECT_FALSE(number.isEnabledFor(other.dispatch()));
}

TEST_F(BlockAttributesTest, SettingAValueChangesThatTextAndNothingElse) {
  Sample sample = doors();
  addReference(sample, {{2, "Door"}}, attribute("D0", "NUMBER", "old") + attribute("D1", "FIRE", "T30"));
  const auto drawing = sample.open();
  const Bound door(*drawing, 2);
  const std::vector<Row> found = rows(door);
  std::string expected = sample.bytes();
  EXPECT_EQ(S_OK, found.at(0).set(L"old"));
  EXPECT_EQ(0U, drawing->revision()) << "it was that already";
  EXPECT_EQ(S_OK, found[0].set(L"n\u00E4chste"));
  expected.replace(expected.find("old"), 3, drawing->document().encode(L"n\u00E4chste"));
  EXPECT_EQ(expected, drawing->document().bytes());
  EXPECT_EQ(L"n\u00E4chste", found[0].text());
  EXPECT_EQ(L"T30", found[1].text());
}

TEST_F(BlockAttributesTest, OnlyTextsAreTaken) {
  Sample sample = doors();
  addReference(sample, {{2, "Door"}}, attribute("D0", "NUMBER", "old"));
  const auto drawing = sample.open();
  const Bound door(*drawing, 2);
  EXPECT_EQ(DISP_E_TYPEMISMATCH, rows(door).at(0).set(automation::test::number(1.0)));
  EXPECT_EQ(DISP_E_TYPEMISMATCH, rows(door).at(0).set(VARIANT{}));
  EXPECT_EQ(sample.bytes(), drawing->document().bytes());
}

TEST_F(BlockAttributesTest, LockedLayersOfTheReferenceAndOfTheAttributeAreRefused) {
  Sample sample = doors();
  addReference(sample, {{8, "Locked"}, {2, "Door"}}, attribute("D0", "NUMBER", "a"));
  addReference(sample, {{8, "0"}, {2, "Door"}}, attribute("D1", "NUMBER", "b", "0", "Locked"));
  const auto drawing = sample.open();
  const Bound one(*drawing, 2);
  const Bound other(*drawing, 3);
  EXPECT_EQ(E_ACCESSDENIED, rows(one).at(0).set(L"x"));
  EXPECT_EQ(E_ACCESSDENIED, rows(other).at(0).set(L"x"));
  EXPECT_EQ(sample.bytes(), drawing->document().bytes());
}

TEST_F(BlockAttributesTest, ConstantAttributesAreReadOnly) {
  Sample sample = doors();
  addReference(sample, {{2, "Door"}}, attribute("D0", "NUMBER", "a", "2"));
  addReference(sample, {{2, "Door"}}, attribute("D1", "NUMBER", "b"));
  const auto drawing = sample.open();
  const Bound constant(*drawing, 2);
  const Bound variable(*drawing, 3);
  const std::vector<Row> found = rows(constant);
  EXPECT_TRUE(found.at(0).isReadOnly());
  EXPECT_EQ(E_ACCESSDENIED, found[0].set(L"x"));
  const std::vector<Row> other = rows(variable);
  EXPECT_FALSE(other.at(0).isReadOnly());
  EXPECT_EQ(E_ACCESSDENIED, Row(constant.dispatch(), other[0].property()).set(L"x"))
      << "by way of the property of another reference, too";
}

TEST_F(BlockAttributesTest, AttributesOfSeveralLinesAreReadOnly) {
  Sample sample = doors();
  std::string lines = attribute("D0", "NUMBER", "one two");
  lines += database::test::text({{101, "Embedded Object"}, {1, "one\\Ptwo"}});
  addReference(sample, {{2, "Door"}}, lines);
  const auto drawing = sample.open();
  const Bound door(*drawing, 2);
  EXPECT_TRUE(rows(door).at(0).isReadOnly());
  EXPECT_EQ(L"one two", rows(door)[0].text());
}

TEST_F(BlockAttributesTest, DrawingsWithoutSubclassMarkersWorkTheSame) {
  Sample sample;
  sample.version("AC1009").block({{2, "Door"}},
                                 record("ATTDEF", {{1, "?"}, {3, "Number"}, {2, "NO"}, {70, "0"}}));
  addReference(sample, {{8, "0"}, {66, "1"}, {2, "Door"}},
               record("ATTRIB", {{8, "0"}, {10, "0"}, {1, "17"}, {2, "NO"}, {70, "0"}}));
  const auto drawing = sample.open();
  const Bound door(*drawing, 1);
  const std::vector<Row> found = rows(door);
  ASSERT_EQ((Names{L"NO"}), namesOf(found));
  EXPECT_EQ(L"Number", found[0].help());
  EXPECT_EQ(S_OK, found[0].set(L"18"));
  EXPECT_EQ(L"18", found[0].text());
}

TEST_F(BlockAttributesTest, NothingIsKeptOutOfBalance) {
  Sample sample = doors();
  addReference(sample, {{2, "Door"}}, attribute("D0", "NUMBER", "a"));
  const auto drawing = sample.open();
  static_cast<void>(rows(Bound(*drawing, 2)));
  const com::Balance balance;
  const Bound door(*drawing, 2);
  EXPECT_EQ(L"a", rows(door).at(0).text());
}

}  // namespace
}  // namespace velt::sources
