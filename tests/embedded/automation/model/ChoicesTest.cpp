#include "embedded/automation/model/Choices.h"

#include <gtest/gtest.h>

#include "embedded/automation/texts/TextTypes.h"
#include "tests/embedded/automation/Toys.h"

namespace velt::automation {
namespace {

using namespace test;
using Offered = std::vector<std::pair<std::wstring, std::wstring>>;

class ChoicesTest : public ::testing::Test {
 protected:
  static PropertyRow row(Choices choices, const ValueType& type = VT_BSTR) {
    PropertyRow made = toyRow({}, type);
    made.choices = choices;
    return made;
  }
  [[nodiscard]] Offered offered(const PropertyRow& of) const {
    const VkDbObjectId id = drawing->entities()[0];
    const Subject subject(*database::resolve(id), id, toyClass);
    Offered list;
    for (std::size_t i = 0; i < choiceCount(subject, of); ++i) {
      const Value value = choiceValue(subject, of, i);
      const auto* text = std::get_if<std::wstring>(&value);
      list.emplace_back(choiceLabel(subject, of, i),
                        text != nullptr ? *text : std::to_wstring(std::get<std::int32_t>(value)));
    }
    return list;
  }

  std::unique_ptr<Drawing> drawing = Sample()
                                         .layer("0")
                                         .layer("W\\U+00E4nde")
                                         .tableRecord("LTYPE", {{2, "Dashed"}})
                                         .tableRecord("STYLE", {{2, "Standard"}})
                                         .tableRecord("STYLE", {{2, "Notes"}})
                                         .entity("TOY")
                                         .open();
};

TEST_F(ChoicesTest, NoneIsNone) {
  EXPECT_EQ(Offered(), offered(row(Choices::None)));
}

TEST_F(ChoicesTest, LayersAndStylesAreThoseOfTheDrawing) {
  EXPECT_EQ((Offered{{L"0", L"0"}, {L"W\u00E4nde", L"W\u00E4nde"}}), offered(row(Choices::Layers)));
  EXPECT_EQ((Offered{{L"Standard", L"Standard"}, {L"Notes", L"Notes"}}), offered(row(Choices::TextStyles)));
}

TEST_F(ChoicesTest, LineTypesIncludeTheImpliedOnes) {
  const Offered list = offered(row(Choices::Linetypes));
  ASSERT_EQ(4U, list.size());
  EXPECT_EQ(L"Dashed", list[3].first);
  std::vector<std::wstring> implied = {list[0].first, list[1].first, list[2].first};
  std::sort(implied.begin(), implied.end());
  EXPECT_EQ((std::vector<std::wstring>{L"ByBlock", L"ByLayer", L"Continuous"}), implied);
}

TEST_F(ChoicesTest, ColorsAreOfferedByTheirIndex) {
  EXPECT_EQ((Offered{{L"ByLayer", L"256"},
                     {L"ByBlock", L"0"},
                     {L"Red", L"1"},
                     {L"Yellow", L"2"},
                     {L"Green", L"3"},
                     {L"Cyan", L"4"},
                     {L"Blue", L"5"},
                     {L"Magenta", L"6"},
                     {L"White", L"7"}}),
            offered(row(Choices::Colors)));
}

TEST_F(ChoicesTest, EnumerationsOfferTheirMembersByNumber) {
  EXPECT_EQ((Offered{{L"At least", L"1"}, {L"Exactly", L"2"}}),
            offered(row(Choices::Enumeration, types::lineSpacingStyle)));
}

TEST_F(ChoicesTest, GradientsAreOfferedByName) {
  const Offered list = offered(row(Choices::Gradients));
  ASSERT_EQ(9U, list.size());
  EXPECT_EQ((std::pair<std::wstring, std::wstring>{L"LINEAR", L"LINEAR"}), list[0]);
}

const std::vector<std::wstring>& twoNames(const Subject&) {
  static const std::vector<std::wstring> names{L"Here", L"There"};
  return names;
}

TEST_F(ChoicesTest, AClassMayHaveNamesOfItsOwn) {
  PropertyRow own = row(Choices::OfClass);
  own.access.names = twoNames;
  EXPECT_EQ((Offered{{L"Here", L"Here"}, {L"There", L"There"}}), offered(own));
}

}  // namespace
}  // namespace velt::automation
