#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;
using database::test::text;

// The faces are lists of numbers, one after the other, each after the number of its corners.
std::unique_ptr<Drawing> meshOf(const std::string& faces) {
  std::string vertices;
  for (const char* const x : {"0", "1", "2", "3"})
    vertices += text({{10, x}, {20, "0"}, {30, "7"}});
  std::string list;
  std::istringstream numbers(faces);
  for (std::string number; numbers >> number;)
    list += text({{90, number}});
  return Sample()
      .entity("MESH", {{100, "AcDbSubDMesh"}, {71, "2"}, {72, "1"}, {91, "2"}, {92, "4"}})
      .append(vertices + text({{93, "0"}}) + list
              + text({{94, "1"}, {90, "0"}, {90, "1"}, {95, "1"}, {140, "0"}}))
      .open();
}

constexpr const char* tetrahedron = "3 0 2 1  3 0 1 3  3 1 2 3  3 0 3 2";

TEST(MeshTest, CountsWhatItIsMadeOf) {
  const auto drawing = meshOf(tetrahedron);
  const Bound made(*drawing, 0);
  EXPECT_EQ(4, made.integer(L"NumberOfVertices"));
  EXPECT_EQ(4, made.integer(L"NumberOfFaces"));
  EXPECT_EQ(3, made.element(L"Vertex", 9));
  EXPECT_EQ(2, made.integer(L"SmoothnessLevel"));
  EXPECT_TRUE(made.flag(L"Closed"));
}

TEST(MeshTest, IsNotClosedWhereAFaceIsMissingDoubledOrTurned) {
  for (const char* const faces : {"3 0 2 1  3 0 1 3  3 1 2 3", "3 0 2 1  3 0 1 3  3 1 2 3  3 0 3 2  3 0 3 2",
                                  "3 0 2 1  3 0 1 3  3 1 2 3  3 0 2 3", ""}) {
    const auto drawing = meshOf(faces);
    EXPECT_FALSE(Bound(*drawing, 0).flag(L"Closed")) << faces;
  }
}

TEST(MeshTest, AFaceThatIsCutOffOrHasNoCornersDoesNotCount) {
  for (const char* const faces :
       {"3 0 2 1  3 0 1", "3 0 2 1  900000000000 0 1", "3 0 2 1  -5 ", "0  3 0 2 1"}) {
    const auto drawing = meshOf(faces);
    EXPECT_EQ(1, Bound(*drawing, 0).integer(L"NumberOfFaces")) << faces;
  }
}

TEST(MeshTest, IsSmoothedMoreOrLess) {
  const auto drawing = meshOf(tetrahedron);
  const Bound made(*drawing, 0);
  EXPECT_EQ(S_OK, made.put(L"SmoothnessLevel", test::integer(0)).result);
  EXPECT_EQ(0, made.integer(L"SmoothnessLevel"));
  EXPECT_EQ(DISP_E_EXCEPTION, made.put(L"SmoothnessLevel", test::integer(-1)).result);
}

}  // namespace
}  // namespace velt::automation
