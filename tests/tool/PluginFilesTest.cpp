#include "tool/PluginFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/Files.h"
#include "tool/Failure.h"

namespace velt::tool {
namespace {

using testing::Contains;
using testing::HasSubstr;

class PluginFiles : public testing::Test {
 protected:
  const tests::TemporaryFolder folder;
  PluginFiles() { setenv("VELT_PLUGIN_PATH", (folder.path("none") + ":" + folder.path("")).c_str(), 1); }
  ~PluginFiles() override { unsetenv("VELT_PLUGIN_PATH"); }

  std::string refusalOf(const std::string& name) {
    try {
      return "found: " + pluginFile(name).string();
    } catch (const Failure& failure) {
      return failure.what();
    }
  }
};

TEST_F(PluginFiles, ANameIsLookedForInTheFolders) {
  const std::string file = folder.write("price.so", "");
  EXPECT_TRUE(std::filesystem::equivalent(pluginFile("price"), file));
  EXPECT_THAT(installedPlugins(), Contains("price"));
}

TEST_F(PluginFiles, AFileIsTakenAsItStands) {
  const std::string file = folder.write("price.so", "");
  EXPECT_EQ(pluginFile(file), file);
  EXPECT_EQ(refusalOf("price.so"), "price.so: no such plug-in") << "a file of the current folder";
  EXPECT_THAT(refusalOf("./price"), HasSubstr("no such plug-in"));
}

TEST_F(PluginFiles, AnUnknownNameGetsThoseThatThereAre) {
  folder.write("price.so", "");
  EXPECT_THAT(refusalOf("prize"), HasSubstr("prize: no such plug-in (installed are "));
  EXPECT_THAT(refusalOf("prize"), HasSubstr("price"));
}

}  // namespace
}  // namespace velt::tool
