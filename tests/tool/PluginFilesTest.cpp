#include "tool/PluginFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "tests/support/Files.h"
#include "tests/support/Places.h"
#include "tool/Failure.h"
#include "tool/Version.h"

namespace velt::tool {
namespace {

using testing::Contains;
using testing::ElementsAre;
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

TEST_F(PluginFiles, TheFoldersAreThoseThatAreNamedAndThenTheProgramsOwn) {
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  const std::filesystem::path installed = (program / pluginFolderFromProgram).lexically_normal();
  const std::filesystem::path built = program.parent_path() / "plugins";
  setenv("VELT_PLUGIN_PATH", ":one::two:", 1);
  EXPECT_THAT(pluginFolders(), ElementsAre("one", "two", installed, built));
  unsetenv("VELT_PLUGIN_PATH");
  EXPECT_THAT(pluginFolders(), ElementsAre(installed, built));
}

TEST_F(PluginFiles, WhatWasBuiltWithTheProgramIsFoundWithoutNamingAFolder) {
  unsetenv("VELT_PLUGIN_PATH");
  EXPECT_TRUE(std::filesystem::equivalent(pluginFile("material"), tests::pluginFolder() / "material.so"));
  EXPECT_THAT(installedPlugins(), Contains("material"));
}

TEST_F(PluginFiles, WhatIsNoSharedObjectIsNotInstalled) {
  folder.write("notes.txt", "");
  folder.write("zebra.so", "");
  folder.write("apple.so", "");
  const std::vector<std::string> installed = installedPlugins();
  EXPECT_THAT(installed, testing::Not(Contains("notes")));
  EXPECT_THAT(installed, testing::IsSupersetOf({"apple", "zebra"}));
  EXPECT_TRUE(std::is_sorted(installed.begin(), installed.end()));
}

}  // namespace
}  // namespace velt::tool
