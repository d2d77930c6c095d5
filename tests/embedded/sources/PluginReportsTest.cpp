#include "embedded/sources/PluginReports.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "host/com/ComError.h"

namespace velt::sources {
namespace {

using Lines = std::vector<std::string>;

PluginReports::Sink into(Lines& lines) {
  return [&lines](const std::string& line) { lines.push_back(line); };
}

TEST(PluginReports, TellEachKindOnceAndMessagesAlways) {
  Lines lines;
  PluginReports reports("bad.so", into(lines));
  reports.tell(Trouble::Exception, "GetProperties threw");
  reports.tell(Trouble::Exception, "GetProperties threw again");
  reports.tell(Trouble::Failure, "GetProperties failed");
  reports.tell(Trouble::Message, "hello");
  reports.tell(Trouble::Message, "hello");
  EXPECT_EQ((Lines{"plug-in bad.so: GetProperties threw", "plug-in bad.so: GetProperties failed",
                   "plug-in bad.so: hello", "plug-in bad.so: hello"}),
            lines);
}

TEST(PluginReports, AreSilentOnDemandAndWithoutAListener) {
  Lines lines;
  PluginReports reports("bad.so", into(lines));
  reports.silence();
  reports.tell(Trouble::Exception, "x");
  EXPECT_TRUE(lines.empty());
  PluginReports("bad.so", nullptr).tell(Trouble::Exception, "x");
}

TEST(PluginReports, GoToStandardErrorAsLines) {
  testing::internal::CaptureStderr();
  PluginReports("bad.so", PluginReports::standardError()).tell(Trouble::Failure, "x");
  EXPECT_EQ("plug-in bad.so: x\n", testing::internal::GetCapturedStderr());
}

TEST(PluginReports, HoldNothingThatATerminalObeys) {
  Lines lines;
  PluginReports reports("bad\x1B.so", into(lines));
  reports.tell(Trouble::Message, "\x1B[31mred\r\n\x9B\x7F\xC2\x9B over");
  const std::string r = "\xEF\xBF\xBD";
  EXPECT_EQ(Lines{"plug-in bad" + r + ".so: " + r + "[31mred" + r + r + r + r + r + " over"}, lines);
}

struct Silent : std::exception {
  const char* what() const noexcept override { return nullptr; }
};

template <class Thrown>
std::string described(const Thrown& thrown) {
  try {
    throw thrown;
  } catch (...) {
    return describeException();
  }
}

TEST(PluginReports, DescribeEveryException) {
  EXPECT_EQ("broken", described(std::runtime_error("broken")));
  EXPECT_EQ("no \u00FCbung", described(_com_error(E_FAIL, L"no \u00FCbung")));
  EXPECT_EQ("The operation failed.", described(_com_error(E_FAIL)));
  EXPECT_EQ("an exception of an unknown type", described(5));
  EXPECT_EQ("an exception without a text", described(Silent()));
}

}  // namespace
}  // namespace velt::sources
