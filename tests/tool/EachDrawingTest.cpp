#include "tool/EachDrawing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

namespace velt::tool {
namespace {

struct RunOfEach {
  ExitCode code;
  std::string out;
  std::string err;
};

// Prints the name of each drawing as JSON; "bad.dxf" fails, and "worse.dxf" ends with wrong usage.
RunOfEach runEach(const std::vector<std::string>& drawings, Sequence sequence) {
  std::ostringstream out, err;
  const ExitCode code =
      onEachDrawing(drawings, sequence, out, err, [](const std::string& drawing, std::ostream& printed) {
        printed << '"' << drawing << "\"\n";
        if (drawing == "bad.dxf") throw Failure("it is damaged");
        return drawing == "worse.dxf" ? wrongUsage : succeeded;
      });
  return {code, out.str(), err.str()};
}

TEST(EachDrawing, OneDrawingIsPrintedAsItIs) {
  for (const Sequence sequence : {Sequence::paragraphs, Sequence::array, Sequence::lines})
    EXPECT_EQ(runEach({"a.dxf"}, sequence).out, "\"a.dxf\"\n");
}

TEST(EachDrawing, TheFailureOfOneDrawingAloneIsPassedOn) {
  EXPECT_THROW(runEach({"bad.dxf"}, Sequence::paragraphs), Failure);
}

TEST(EachDrawing, TextsStandApart) {
  EXPECT_EQ(runEach({"a.dxf", "b.dxf"}, Sequence::paragraphs).out, "\"a.dxf\"\n\n\"b.dxf\"\n");
  EXPECT_EQ(runEach({"a.dxf", "b.dxf"}, Sequence::lines).out, "\"a.dxf\"\n\"b.dxf\"\n");
}

TEST(EachDrawing, JsonOfSeveralIsOneArrayInWhichAFailureHasItsName) {
  const RunOfEach run = runEach({"bad.dxf", "b.dxf"}, Sequence::array);
  const auto expected =
      nlohmann::json::parse(R"([{"drawing": "bad.dxf", "error": "it is damaged"}, "b.dxf"])");
  EXPECT_EQ(nlohmann::json::parse(run.out), expected);
}

TEST(EachDrawing, OneThatFailsIsToldAndDoesNotStopTheOthers) {
  const RunOfEach run = runEach({"a.dxf", "bad.dxf", "b.dxf"}, Sequence::paragraphs);
  EXPECT_EQ(run.code, failed);
  EXPECT_EQ(run.out, "\"a.dxf\"\n\n\"b.dxf\"\n");
  EXPECT_EQ(run.err, "veltprops: bad.dxf: it is damaged\n");
}

TEST(EachDrawing, TheHighestExitCodeCounts) {
  EXPECT_EQ(runEach({"a.dxf", "b.dxf"}, Sequence::lines).code, succeeded);
  EXPECT_EQ(runEach({"worse.dxf", "bad.dxf"}, Sequence::lines).code, wrongUsage);
}

TEST(EachDrawing, WrongUsageIsThatOfEveryDrawing) {
  std::ostringstream out, err;
  int calls = 0;
  const auto refuse = [&](const std::string&, std::ostream&) -> ExitCode {
    ++calls;
    throw UsageFailure("which entities?");
  };
  EXPECT_THROW(onEachDrawing({"a.dxf", "b.dxf"}, Sequence::lines, out, err, refuse), UsageFailure);
  EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace velt::tool
