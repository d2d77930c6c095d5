#include "tool/UsageMessage.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "tool/CommandLine.h"

namespace velt::tool {
namespace {

TEST(UsageMessage, SaysWhatWasProbablyMeant) {
  const auto wrong = [](std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "veltprops");
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(run(static_cast<int>(arguments.size()), arguments.data(), out, err), 2);
    EXPECT_EQ(out.str(), "");
    return err.str();
  };
  EXPECT_EQ(wrong({}), "veltprops: which command? \"veltprops --help\" lists them\n");
  EXPECT_EQ(wrong({"shwo", "a.dxf"}), "veltprops: shwo: no such command; did you mean show?\n");
  EXPECT_EQ(wrong({"x"}), "veltprops: x: no such command; \"veltprops --help\" tells more\n");
  EXPECT_EQ(wrong({"-"}), "veltprops: -: no such command; \"veltprops --help\" tells more\n")
      << "standard input is no option";
  EXPECT_EQ(wrong({"--versoin"}),
            "veltprops: --versoin: veltprops has no such option; did you mean --version?\n");
  EXPECT_EQ(wrong({"show", "a.dxf", "--layr", "0"}),
            "veltprops: --layr: veltprops show has no such option; did you mean --layer?\n");
  EXPECT_EQ(wrong({"show", "a.dxf", "-x"}),
            "veltprops: -x: veltprops show has no such option; \"veltprops show --help\" tells more\n");
  EXPECT_EQ(wrong({"show", "--all"}),
            "veltprops: DRAWING is required; \"veltprops show --help\" tells more\n");
}

}  // namespace
}  // namespace velt::tool
