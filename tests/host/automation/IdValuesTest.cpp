#include "host/automation/IdValues.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <set>
#include <string>

namespace velt {
namespace {

TEST(HostIds, NameEveryClassOnceWithAnIdOfItsOwn) {
  std::set<std::string> names;
  std::set<std::string> ids;
  for (const NamedClass& named : namedClasses) {
    names.insert(named.name);
    ids.insert(std::string(reinterpret_cast<const char*>(&named.clsid), sizeof(CLSID)));
    EXPECT_EQ(std::wstring(named.name, named.name + std::strlen(named.name)), named.wideName);
  }
  EXPECT_EQ(std::size(namedClasses), names.size());
  EXPECT_EQ(std::size(namedClasses), ids.size());
}

TEST(HostIds, NoClassIdContainsAZeroByte) {
  for (const NamedClass& named : namedClasses) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(&named.clsid);
    EXPECT_EQ(0, std::count(bytes, bytes + sizeof(CLSID), 0)) << named.name;
  }
}

TEST(HostIds, AClassIsFoundByItsIdAndNoOther) {
  const NamedClass* line = findClass(CLSID_VeltLine);
  ASSERT_NE(nullptr, line);
  EXPECT_STREQ("VeltLine", line->name);
  EXPECT_EQ(0x18D8D10FU, CLSID_VeltLine.Data1);
  EXPECT_EQ(0xF9, CLSID_VeltLine.Data4[7]);
  EXPECT_EQ(nullptr, findClass(GUID_NULL));
  EXPECT_EQ(nullptr, findClass(IID_IVeltBaseObject)) << "an interface is no class";
}

}  // namespace
}  // namespace velt
