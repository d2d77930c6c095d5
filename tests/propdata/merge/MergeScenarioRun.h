#pragma once

// Comparing two merges of random scenarios (MergeScenario.h), and making sure that the scenarios reach something.

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace velt::tests {

// What was reached, so that a generator that reaches nothing shows.
struct Reached {
  int kept = 0, varying = 0, brokenUp = 0, messages = 0, pairs = 0;

  template <class Outcome>
  void count(const Outcome& outcome) {
    const auto hasRow = [&](const char* part) {
      return std::ranges::any_of(
          outcome.result, [part](const std::string& row) { return row.find(part) != std::string::npos; });
    };
    kept += !outcome.result.empty();
    varying += hasRow(" varies 1");
    brokenUp += std::ranges::any_of(outcome.calls, [](const std::string& call) {
      return call.starts_with("GetElementValue") && !call.ends_with(" on e0");
    });
    messages += outcome.errorText != "as before";
    pairs += hasRow("sources (");
  }
};

// Runs the property for so many scenarios, more when RapidCheck is told so. The property counts what it reaches.
template <class Property>
void holdsForScenarios(const Property& property, int scenarios, const Reached& reached) {
  rc::detail::TestParams params = rc::detail::configuration().testParams;
  params.maxSuccess = std::max(params.maxSuccess, scenarios);
  std::cout << "seed " << params.seed << " (RC_PARAMS=\"seed=" << params.seed << "\" runs it again)\n";
  const rc::detail::TestResult outcome =
      rc::detail::checkProperty(rc::detail::toProperty(property), rc::detail::TestMetadata(), params);
  if (!outcome.is<rc::detail::SuccessResult>()) {
    std::ostringstream message;
    rc::detail::printResultMessage(outcome, message);
    FAIL() << message.str();
  }
  std::cout << "of " << params.maxSuccess << ": with rows kept " << reached.kept << ", varying "
            << reached.varying << ", broken up " << reached.brokenUp << ", messages " << reached.messages
            << ", pairs " << reached.pairs << "\n";
  const int enough = params.maxSuccess / 50;
  EXPECT_GT(reached.kept, enough);
  EXPECT_GT(reached.varying, enough);
  EXPECT_GT(reached.brokenUp, enough);
  EXPECT_GT(reached.messages, enough);
  EXPECT_GT(reached.pairs, enough);
}

}  // namespace velt::tests
