#include "hostcheck/HostCheck.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "embedded/database/Drawing.h"
#include "hostcheck/CheckList.h"
#include "tests/support/WholeDrawings.h"

namespace velt::hostcheck {
namespace {

using namespace velt;
using hostcheck::checks;
using hostcheck::Report;

std::vector<long> idsOf(const database::Drawing& drawing, std::size_t everyNth = 1) {
  std::vector<long> ids;
  for (std::size_t i = 0; i < drawing.entities().size(); i += everyNth)
    ids.push_back(drawing.entities()[i].asOldId());
  return ids;
}

TEST(HostCheck, FindsNothingInTheEmbeddedHost) {
  tests::forEachDrawing([](const tests::WholeDrawing& whole) {
    const auto drawing = database::Drawing::parse(whole.bytes, whole.name);
    // A large drawing has the same over and over: some two hundred entities from all over it.
    const std::size_t everyNth = whole.isOwn ? 1 : drawing->entities().size() / 200 + 1;
    const Report report = hostcheck::checkHost(idsOf(*drawing, everyNth));
    for (const hostcheck::Finding& finding : report.findings)
      ADD_FAILURE() << finding.check << ": " << finding.subject << "\n  expected " << finding.expected
                    << "\n  came " << finding.came;
    // The gallery has an entity of every class, so nothing is left to try.
    if (whole.isOwn && whole.name.find("gallery") != std::string::npos) {
      EXPECT_EQ(report.tried.size(), checks.size());
      EXPECT_TRUE(report.notTried.empty());
    }
  });
}

TEST(HostCheck, TriesTheFunctionsOfAHostWithoutEntities) {
  const Report report = hostcheck::checkHost({});
  EXPECT_TRUE(report.findings.empty());
  EXPECT_GT(report.tried.size(), 20U);
  EXPECT_EQ(report.tried.size() + report.notTried.size(), checks.size());
}

TEST(HostCheck, EndsWithAFindingWhenTheHostEndsIt) {
  Report report;
  report.onTry = [](const std::string& check, const std::string&) {
    if (check == "heap") throw std::runtime_error("lost");
  };
  veltCheckHost(nullptr, 0, &report);
  ASSERT_EQ(report.findings.size(), 1U);
  EXPECT_EQ(report.findings.front().check, "exceptions");
  EXPECT_EQ(report.findings.front().came, "lost");
}

TEST(HostCheck, WritesNothingToTheEntities) {
  tests::forEachDrawing([](const tests::WholeDrawing& whole) {
    if (!whole.isOwn) return;
    const auto drawing = database::Drawing::parse(whole.bytes, whole.name);
    const std::string before = drawing->document().bytes();
    hostcheck::checkHost(idsOf(*drawing));
    EXPECT_EQ(drawing->document().bytes(), before) << whole.name;
  });
}

}  // namespace
}  // namespace velt::hostcheck
