#include <gtest/gtest.h>

#include <numbers>
#include <stdexcept>

#include "dxf/ModelLine.h"
#include "samples/Gallery.h"
#include "tests/embedded/automation/Automation.h"
#include "tests/embedded/automation/geometry/RegionText.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;

// A region of these lines, in pieces of so many characters.
std::unique_ptr<Drawing> drawn(const std::vector<std::string>& lines, std::size_t longest = 255) {
  std::string pairs = "100\nAcDbModelerGeometry\n70\n1\n";
  for (const std::string& line : lines) {
    const std::string stored = dxf::encodeModelLine(line);
    for (std::size_t at = 0; at < stored.size(); at += longest)
      pairs += (at == 0 ? "1\n" : "3\n") + stored.substr(at, longest) + "\n";
  }
  return Sample().entity("REGION").append(pairs).open();
}

TEST(RegionTest, ItsAreaAndPerimeterFollowFromTheModellersText) {
  const auto drawing = drawn(RegionText().face({rectangle({0, 0}, {4, 3}), {circle({2, 1}, 0.5)}}).lines());
  const Bound made(*drawing, 0);
  EXPECT_NEAR(12 - pi / 4, made.real(L"Area"), 1e-12);
  EXPECT_NEAR(14 + pi, made.real(L"Perimeter"), 1e-12);
}

TEST(RegionTest, LinesThatTheDrawingCutAreJoined) {
  const auto lines = RegionText().face({rectangle({0, 0}, {4, 3})}).lines();
  const auto drawing = drawn(lines, 7);
  const Bound made(*drawing, 0);
  EXPECT_NEAR(12, made.real(L"Area"), 1e-12);
  EXPECT_EQ(std::to_wstring(lines.size()) + L" lines", made.text(L"ModelData"));
}

TEST(RegionTest, SaysWhyItsAreaCannotBeTold) {
  for (const auto& [lines, reason] :
       {std::pair<std::vector<std::string>, const wchar_t*>{{}, L"not read here"},
        {{"20800 43 2 0"}, L"incomplete"},
        {{"400 0 1 0", "body $-1 $-1 $-1 $-1 #"}, L"lacks a part"}}) {
    const auto drawing = drawn(lines);
    const Bound made(*drawing, 0);
    for (const wchar_t* name : {L"Area", L"Perimeter"}) {
      const Answer answer = made.get(name);
      EXPECT_EQ(DISP_E_EXCEPTION, answer.result);
      EXPECT_NE(std::wstring::npos, answer.description.find(reason));
    }
  }
}

// The first region of the drawing.
Bound regionOf(const Drawing& drawing) {
  for (const VkDbObjectId id : drawing.entities()) {
    if (drawing.view(database::resolve(id)->record).type() == "REGION") return Bound(id);
  }
  throw std::runtime_error("the drawing has no region");
}

TEST(RegionTest, TheOneOfTheGalleryIsASquareWithARoundHole) {
  const auto drawing = Drawing::parse(samples::galleryDrawing(), "gallery.dxf");
  const Bound made = regionOf(*drawing);
  EXPECT_NEAR(100 - 9 * pi, made.real(L"Area"), 1e-12);
  EXPECT_NEAR(40 + 6 * pi, made.real(L"Perimeter"), 1e-12);
}

}  // namespace
}  // namespace velt::automation
