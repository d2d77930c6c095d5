#include "embedded/automation/solids/ModelGeometry.h"

#include <gtest/gtest.h>

#include <string>

#include "dxf/ModelLine.h"
#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;
using dxf::encodeModelLine;

std::unique_ptr<Drawing> solidOf(const std::string& text) {
  return Sample().entity("3DSOLID", {{100, "AcDbModelerGeometry"}, {70, "1"}}).append(text).open();
}

const std::string twoLines = "1\n" + encodeModelLine("400 1 1 0") + "\n1\n" + encodeModelLine("body $-1 $-1 ")
                             + "\n3\n" + encodeModelLine("$-1 $-1 #") + "\n";

TEST(ModelGeometry, JoinsWhatTheDrawingCut) {
  const auto drawing = solidOf(twoLines);
  const ModelText model = modelOf(subjectOf(*drawing));
  EXPECT_EQ(400, model.version());
  ASSERT_EQ(1U, model.size());
  EXPECT_EQ("body", model.nameOf(0));
  EXPECT_EQ(L"2 lines", modelDataOf(subjectOf(*drawing)));
}

TEST(ModelGeometry, WithoutATextThereIsNothingToTell) {
  const auto drawing = solidOf("310\n0102\n");
  EXPECT_EQ(E_FAIL, refusalOf([&] { static_cast<void>(modelOf(subjectOf(*drawing))); }));
  EXPECT_EQ(L"0 lines", modelDataOf(subjectOf(*drawing)));
}

TEST(ModelGeometry, ATextThatCannotBeMeasuredIsARefusalWithTheReason) {
  const auto drawing = solidOf("1\n" + encodeModelLine("400 9 1 0") + "\n");
  try {
    static_cast<void>(toldByModel(subjectOf(*drawing), [](const ModelText& model) { return model.size(); }));
    FAIL() << "a text without records";
  } catch (const Refusal& refusal) {
    EXPECT_EQ(L"The model cannot be measured: the modeller's text is incomplete.", refusal.text());
  }
}

}  // namespace
}  // namespace velt::automation
