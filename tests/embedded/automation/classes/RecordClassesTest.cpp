#include "embedded/automation/classes/RecordClasses.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <string>
#include <string_view>

#include "embedded/automation/classes/ClassList.h"
#include "host/automation/IdValues.h"
#include "embedded/database/ObjectClass.h"
#include "tests/embedded/database/Sample.h"

namespace velt::automation {
namespace {

using database::test::entityRecord;
using database::test::Sample;

const AutomationClass* classOfEntity(const std::string& type) {
  const auto drawing = Sample().entity(type).open();
  return classOfRecord(*drawing, entityRecord(*drawing));
}

TEST(RecordClasses, TheTypeOfTheRecordNamesTheClass) {
  EXPECT_EQ(CLSID_VeltLine, classOfEntity("LINE")->clsid);
  EXPECT_EQ(CLSID_VeltHatch, classOfEntity("HATCH")->clsid);
  EXPECT_EQ(CLSID_VeltBlockReference, classOfEntity("INSERT")->clsid);
}

TEST(RecordClasses, AnUnknownTypeHasNoClass) {
  EXPECT_EQ(nullptr, classOfEntity("SPACESHIP"));
}

TEST(RecordClasses, OfEachTypeOneClassAtMostTakesWhatTheOthersLeave) {
  std::set<std::string_view> left;
  for (const AutomationClass* kind : automationClasses()) {
    if (kind->dxfName.empty() || kind->standsFor != nullptr) continue;
    EXPECT_TRUE(left.insert(kind->dxfName).second) << kind->dxfName;
  }
}

TEST(RecordClasses, EveryTypeIsOneThatTheDatabaseKnows) {
  std::set<std::string_view> known;
  for (const database::ObjectClass& row : database::objectClasses()) {
    if (isEntityShape(row.shape)) known.insert(row.dxfName);
  }
  for (const AutomationClass* kind : automationClasses())
    EXPECT_TRUE(known.contains(kind->dxfName)) << kind->dxfName;
}

TEST(RecordClasses, EveryTableBearsTheIdAndTheNameThatItIsListedUnder) {
  const auto classes = automationClasses();
  ASSERT_EQ(std::size(namedClasses), classes.size());
  for (std::size_t i = 0; i < classes.size(); ++i) {
    EXPECT_EQ(namedClasses[i].clsid, classes[i]->clsid) << namedClasses[i].name;
    EXPECT_EQ(std::wstring_view(namedClasses[i].wideName), classes[i]->name);
  }
}

}  // namespace
}  // namespace velt::automation
