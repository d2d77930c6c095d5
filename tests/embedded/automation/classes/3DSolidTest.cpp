#include <gtest/gtest.h>

#include <string>

#include "dxf/ModelLine.h"
#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;

std::unique_ptr<Drawing> solidOf(std::initializer_list<const char*> lines) {
  std::string text;
  for (const char* const line : lines)
    text += "1\n" + dxf::encodeModelLine(line) + "\n";
  return Sample().entity("3DSOLID", {{100, "AcDbModelerGeometry"}, {70, "1"}}).append(text).open();
}

TEST(SolidInSpaceTest, CountsItsFacesAndEdges) {
  const auto drawing = solidOf({"400 3 1 0", "face $-1 #", "edge $-1 #", "face $-1 #"});
  const Bound made(*drawing, 0);
  EXPECT_EQ(2, made.integer(L"NumberOfFaces"));
  EXPECT_EQ(1, made.integer(L"NumberOfEdges"));
  EXPECT_EQ(L"4 lines", made.text(L"ModelData"));
}

TEST(SolidInSpaceTest, WithoutATextTheyCannotBeTold) {
  const auto drawing = solidOf({});
  const Answer answer = Bound(*drawing, 0).get(L"NumberOfFaces");
  EXPECT_EQ(DISP_E_EXCEPTION, answer.result);
  EXPECT_EQ(L"The drawing stores the model in a form that is not read here.", answer.description);
}

}  // namespace
}  // namespace velt::automation
