#include "embedded/sources/LoadedPlugins.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "embedded/sources/HostSources.h"
#include "embedded/sources/SourceRegistry.h"
#include "host/database/VkDbEntity.h"
#include "tests/embedded/sources/Properties.h"
#include "tests/support/Places.h"

namespace velt::sources {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class LoadedPluginsTest : public testing::Test {
 protected:
  bool load(const std::string& name) {
    return plugins_->load(velt::tests::testPluginFolder() / (name + ".so"));
  }
  static bool isOffered(const wchar_t* source) {
    return static_cast<bool>(SourceRegistry::ofProcess().find(source));
  }
  static std::size_t offeredForEntities() {
    return SourceRegistry::ofProcess().namesFor(VkDbEntity::desc()).size();
  }

  std::vector<std::string> lines_;
  std::unique_ptr<LoadedPlugins> plugins_ =
      std::make_unique<LoadedPlugins>([this](const std::string& line) { lines_.push_back(line); });
};

TEST_F(LoadedPluginsTest, AGoodPluginIsOfferedUntilTheEnd) {
  EXPECT_TRUE(load("Good"));
  EXPECT_THAT(lines_, IsEmpty());
  ASSERT_TRUE(isOffered(L"Test.Good"));
  {
    const auto source = SourceRegistry::ofProcess().find(L"Test.Good");
    VariantHolder properties;
    EXPECT_EQ(S_OK, source->GetProperties(nullptr, properties.put()));
    EXPECT_EQ(2U, elementsOf(properties.get()).size());
  }
  plugins_.reset();
  EXPECT_FALSE(isOffered(L"Test.Good"));
  EXPECT_EQ(1U, offeredForEntities()) << "the host's own stays";
}

TEST_F(LoadedPluginsTest, APluginMayBeLoadedAnewButNotTwiceAtOnce) {
  EXPECT_TRUE(load("Good"));
  EXPECT_FALSE(load("Good"));
  EXPECT_THAT(lines_, ElementsAre("plug-in Good.so: it is loaded already"));
  EXPECT_TRUE(isOffered(L"Test.Good"));
  plugins_ = std::make_unique<LoadedPlugins>(nullptr);
  EXPECT_TRUE(load("Good"));
  EXPECT_TRUE(isOffered(L"Test.Good"));
}

TEST_F(LoadedPluginsTest, WhatIsNotASharedObjectIsRefused) {
  EXPECT_FALSE(load("Missing"));
  EXPECT_THAT(lines_, ElementsAre(HasSubstr("plug-in Missing.so: it cannot be loaded: ")));
  EXPECT_FALSE(plugins_->load(__FILE__));
  EXPECT_EQ(2U, lines_.size());
}

TEST_F(LoadedPluginsTest, APluginWithoutTheEntryPointIsRefused) {
  EXPECT_FALSE(load("NoEntryPoint"));
  EXPECT_THAT(lines_, ElementsAre("plug-in NoEntryPoint.so: it has no entry point veltRegisterPlugin"));
}

TEST_F(LoadedPluginsTest, NothingStaysOfAPluginOfAnotherVersion) {
  EXPECT_FALSE(load("WrongVersion"));
  EXPECT_THAT(lines_, ElementsAre("plug-in WrongVersion.so: it is of version 2, and the host of version 1"));
  EXPECT_FALSE(isOffered(L"Test.WrongVersion"));
}

TEST_F(LoadedPluginsTest, NothingStaysOfAPluginThatRefuses) {
  EXPECT_FALSE(load("Refuses"));
  EXPECT_THAT(lines_, ElementsAre("plug-in Refuses.so: no licence today",
                                  "plug-in Refuses.so: it refused to work: Access is denied."));
  EXPECT_FALSE(isOffered(L"Test.Refuses"));
}

TEST_F(LoadedPluginsTest, NothingStaysOfAPluginThatThrows) {
  EXPECT_FALSE(load("ThrowsOnEntry"));
  EXPECT_THAT(lines_, ElementsAre("plug-in ThrowsOnEntry.so: veltRegisterPlugin threw: no settings found"));
  EXPECT_FALSE(isOffered(L"Test.ThrowsOnEntry"));
}

TEST_F(LoadedPluginsTest, SourcesThatCannotBeOfferedAreRefusedOneByOne) {
  EXPECT_TRUE(load("AddsNonsense")) << "it checks each answer itself";
  EXPECT_EQ(1U, lines_.size()) << "told once per kind";
  EXPECT_TRUE(isOffered(L"Test.AddsNonsense"));
  EXPECT_FALSE(isOffered(L"Test.A"));
}

TEST_F(LoadedPluginsTest, ACopyOfTheTableIsRefused) {
  EXPECT_TRUE(load("CopiesTable")) << "it checks each answer itself";
  EXPECT_THAT(
      lines_,
      ElementsAre("plug-in CopiesTable.so: it passed a copy of the host's table instead of the table"));
  EXPECT_FALSE(isOffered(L"Test.CopiesTable"));
}

TEST_F(LoadedPluginsTest, APluginThatThrowsOnReleaseIsLetGoOf) {
  EXPECT_TRUE(load("ThrowsOnRelease"));
  {
    const auto source = SourceRegistry::ofProcess().find(L"Test.ThrowsOnRelease");
    VariantHolder properties;
    EXPECT_EQ(S_OK, source->GetProperties(nullptr, properties.put()));
    const auto elements = elementsOf(properties.get());
    ASSERT_EQ(2U, elements.size());
    VariantHolder value;
    EXPECT_EQ(S_OK, automation::test::ask<IDynamicProperty2>(*elements[1].get())
                        ->GetCurrentValueData(nullptr, value.put()));
    EXPECT_EQ(VT_UNKNOWN, value.get().vt);
  }
  plugins_.reset();
  EXPECT_THAT(
      lines_,
      ElementsAre("plug-in ThrowsOnRelease.so: Release threw: \xEF\xBF\xBD[31mI am not done\xEF\xBF\xBD[0m"));
}

TEST_F(LoadedPluginsTest, APluginDoesNotTouchTheOthers) {
  EXPECT_FALSE(load("ThrowsOnEntry"));
  EXPECT_TRUE(load("Lies"));
  EXPECT_TRUE(load("Good"));
  EXPECT_TRUE(isOffered(L"Test.Good"));
  EXPECT_TRUE(isOffered(extendedDataSource));
}

}  // namespace
}  // namespace velt::sources
