#include "embedded/automation/objects/Hyperlinks.h"

#include <gtest/gtest.h>

#include "tests/embedded/database/Sample.h"

namespace velt::automation {
namespace {

using database::test::Pairs;
using database::test::Sample;

std::vector<std::vector<std::wstring>> linksOf(Pairs pairs) {
  const auto drawing = Sample().entity("LINE", pairs).open();
  std::vector<std::vector<std::wstring>> links;
  for (const Hyperlink& link : hyperlinksOf(*database::resolve(drawing->entities()[0]))) {
    links.push_back({link.url, link.description, link.subLocation});
  }
  return links;
}

using Links = std::vector<std::vector<std::wstring>>;

TEST(Hyperlinks, AnEntityWithoutDataHasNone) {
  EXPECT_EQ(Links(), linksOf({{10, "0"}}));
  EXPECT_EQ(Links(), linksOf({{1001, "OTHER"}, {1000, "no link"}}));
  EXPECT_EQ(Links(), linksOf({{1001, "PE_URL"}}));
}

TEST(Hyperlinks, AnAddressMayStandAlone) {
  EXPECT_EQ((Links{{L"http://a.example/", L"", L""}}),
            linksOf({{1001, "PE_URL"}, {1000, "http://a.example/"}}));
}

TEST(Hyperlinks, TheListAfterItDescribesIt) {
  EXPECT_EQ((Links{{L"plan.dxf", L"The plan", L"Floor 1"}}), linksOf({{1001, "PE_URL"},
                                                                      {1000, "plan.dxf"},
                                                                      {1002, "{"},
                                                                      {1000, "The plan"},
                                                                      {1000, "Floor 1"},
                                                                      {1002, "{"},
                                                                      {1071, "1"},
                                                                      {1000, "not a text of the link"},
                                                                      {1002, "}"},
                                                                      {1002, "}"}}));
}

TEST(Hyperlinks, ThereMayBeSeveral) {
  EXPECT_EQ((Links{{L"one", L"first", L""}, {L"two", L"", L""}, {L"three", L"third", L"there"}}),
            linksOf({{1001, "OTHER"},
                     {1000, "x"},
                     {1001, "PE_URL"},
                     {1000, "one"},
                     {1002, "{"},
                     {1000, "first"},
                     {1002, "}"},
                     {1000, "two"},
                     {1000, "three"},
                     {1002, "{"},
                     {1000, "third"},
                     {1000, "there"},
                     {1002, "}"},
                     {1001, "MORE"},
                     {1000, "y"}}));
}

TEST(Hyperlinks, TextsAreDecoded) {
  EXPECT_EQ((Links{{L"\u00E4", L"", L""}}), linksOf({{1001, "PE_URL"}, {1000, "\\U+00E4"}}));
}

TEST(Hyperlinks, BracesThatDoNotMatchDoNoHarm) {
  EXPECT_EQ(
      (Links{{L"one", L"first", L""}}),
      linksOf({{1001, "PE_URL"}, {1002, "}"}, {1000, "one"}, {1002, "{"}, {1002, "{"}, {1000, "first"}}));
}

}  // namespace
}  // namespace velt::automation
