#include "embedded/automation/classes/ClassDirectory.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <string>
#include <string_view>

#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/database/ObjectClass.h"
#include "host/automation/IdValues.h"
#include "tests/embedded/database/Sample.h"

namespace velt::automation {
namespace {

using database::test::entityRecord;
using database::test::Sample;

const AutomationClass* classOfEntity(const std::string& type) {
  const auto drawing = Sample().entity(type).open();
  return classOfRecord(*drawing, entityRecord(*drawing));
}

TEST(ClassDirectory, TheTypeOfTheRecordNamesTheClass) {
  EXPECT_EQ(CLSID_VeltLine, classOfEntity("LINE")->clsid);
  EXPECT_EQ(CLSID_VeltHatch, classOfEntity("HATCH")->clsid);
  EXPECT_EQ(CLSID_VeltBlockReference, classOfEntity("INSERT")->clsid);
}

TEST(ClassDirectory, AnUnknownTypeHasNoClass) {
  EXPECT_EQ(nullptr, classOfEntity("SPACESHIP"));
}

TEST(ClassDirectory, OfEachTypeOneClassAtMostTakesWhatTheOthersLeave) {
  std::set<std::string_view> left;
  for (const AutomationClass* kind : automationClasses()) {
    if (kind->dxfName.empty() || kind->standsFor != nullptr) continue;
    EXPECT_TRUE(left.insert(kind->dxfName).second) << kind->dxfName;
  }
}

TEST(ClassDirectory, EveryTypeIsOneThatTheDatabaseKnows) {
  std::set<std::string_view> known;
  for (const database::ObjectClass& row : database::objectClasses()) {
    if (isEntityShape(row.shape)) known.insert(row.dxfName);
  }
  for (const AutomationClass* kind : automationClasses())
    EXPECT_TRUE(known.contains(kind->dxfName)) << kind->dxfName;
}

struct Listed {
  CLSID clsid;
  std::wstring_view name;
};

constexpr Listed listed[] = {
#define VELT_CLSID(name, ...) {CLSID_##name, L"" #name},
#define VELT_IID(name, ...)
#include "host/automation/Ids.inc"
};

TEST(ClassDirectory, EveryTableBearsTheIdAndTheNameThatItIsListedUnder) {
  const auto classes = automationClasses();
  ASSERT_EQ(std::size(listed), classes.size());
  for (std::size_t i = 0; i < classes.size(); ++i) {
    EXPECT_EQ(listed[i].clsid, classes[i]->clsid) << i;
    EXPECT_EQ(listed[i].name, classes[i]->name);
  }
}

TEST(ClassDirectory, AClassIsFoundByItsIdAndNoOther) {
  ASSERT_NE(nullptr, findClass(CLSID_VeltLine));
  EXPECT_EQ(std::wstring_view(L"VeltLine"), findClass(CLSID_VeltLine)->name);
  EXPECT_EQ(nullptr, findClass(GUID_NULL));
  EXPECT_EQ(nullptr, findClass(IID_IVeltBaseObject)) << "an interface is no class";
}

}  // namespace
}  // namespace velt::automation
