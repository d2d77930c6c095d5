#include "hostcheck/Findings.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>

#include "hostcheck/CheckList.h"

namespace velt::hostcheck {
namespace {

TEST(Findings, TellWhatWasExpectedWhatCameAndWhatSuffers) {
  Report report;
  Findings findings(report);
  findings.about("entity 3");

  EXPECT_TRUE(findings.expect(true, "label", "a label", "none"));
  EXPECT_FALSE(findings.expect(false, "label", "a label", "none"));

  ASSERT_EQ(report.findings.size(), 1U);
  const Finding& finding = report.findings.front();
  EXPECT_EQ(finding.check, "label");
  EXPECT_EQ(finding.subject, "entity 3");
  EXPECT_EQ(finding.expected, "a label");
  EXPECT_EQ(finding.came, "none");
  EXPECT_EQ(finding.suffers, "the label of the row");
}

TEST(Findings, ListWhatWasTriedInTheOrderOfTheListAndGiveAReasonForTheRest) {
  Report report;
  Findings findings(report);

  findings.tries("label");
  findings.tries("heap");
  findings.tries("label");
  findings.cannotTry("array-bounds", "no arrays");
  findings.finish();

  EXPECT_EQ(report.tried, (std::vector<std::string>{"heap", "label"}));
  EXPECT_EQ(report.tried.size() + report.notTried.size(), checks.size());
  for (const NotTried& one : report.notTried) {
    EXPECT_FALSE(one.reason.empty()) << one.check;
    if (one.check == "array-bounds") {
      EXPECT_EQ(one.reason, "no arrays");
    }
  }
}

TEST(Findings, TellWhatIsTriedBeforeItIs) {
  Report report;
  std::string said;
  report.onTry = [&](const std::string& check, const std::string& subject) {
    said += check + "/" + subject + " ";
  };
  Findings findings(report);
  findings.about("entity 3");

  findings.tries("label");
  findings.expect(true, "label", "", "");
  findings.call("Invoke", [] { return S_OK; });

  EXPECT_EQ(said, "label/entity 3 Invoke/entity 3 ");
}

TEST(Findings, TakeAComErrorForAFailureAndFindEveryOtherException) {
  Report report;
  Findings findings(report);

  EXPECT_EQ(findings.call("Invoke", [] { return S_FALSE; }), S_FALSE);
  EXPECT_EQ(findings.call("Invoke", []() -> HRESULT { throw _com_error(E_ACCESSDENIED); }), E_FAIL);
  EXPECT_TRUE(report.findings.empty());
  EXPECT_EQ(findings.call("Invoke", []() -> HRESULT { throw std::runtime_error("lost"); }), E_FAIL);

  ASSERT_EQ(report.findings.size(), 1U);
  EXPECT_EQ(report.findings.front().check, "exceptions");
}

TEST(Findings, OfOneCheckAreToldTwentyTimesAndCountedAfterThat) {
  Report report;
  Findings findings(report);
  for (int i = 0; i < 30; ++i)
    findings.expect(false, "label", "a label", "none");
  findings.expect(false, "heap", "a block", "null");

  EXPECT_EQ(report.findings.size(), 21U);
  EXPECT_EQ(report.further, (std::map<std::string, std::size_t>{{"label", 10}}));
}

TEST(Findings, WriteTextsInUtf8) {
  EXPECT_EQ(narrow(L"\u00D8 \u2588 \U0001F4D0"), "\u00D8 \u2588 \U0001F4D0");
  EXPECT_EQ(narrow(nullptr), "");
  EXPECT_EQ(hex(E_FAIL), "0x80004005");
}

TEST(CheckList, NamesEachCheckOnceAndSaysWhatSuffers) {
  std::set<std::string_view> names;
  for (const Check& check : checks) {
    EXPECT_TRUE(names.insert(check.name).second) << check.name;
    EXPECT_FALSE(check.suffers.empty()) << check.name;
  }
}

}  // namespace
}  // namespace velt::hostcheck
