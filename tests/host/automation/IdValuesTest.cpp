#include "host/automation/IdValues.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <string>

namespace velt {
namespace {

struct Listed {
  const char* name;
  GUID id;
};

constexpr Listed classes[] = {
#define VELT_CLSID(name, ...) {#name, CLSID_##name},
#define VELT_IID(name, ...)
#include "host/automation/Ids.inc"
};

TEST(IdValues, EveryClassIsListedOnceWithAnIdOfItsOwn) {
  std::set<std::string> names;
  std::set<std::string> ids;
  for (const Listed& listed : classes) {
    names.insert(listed.name);
    ids.insert(std::string(reinterpret_cast<const char*>(&listed.id), sizeof(GUID)));
  }
  EXPECT_EQ(std::size(classes), names.size());
  EXPECT_EQ(std::size(classes), ids.size());
}

TEST(IdValues, NoClassIdContainsAZeroByte) {
  for (const Listed& listed : classes) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(&listed.id);
    EXPECT_EQ(0, std::count(bytes, bytes + sizeof(GUID), 0)) << listed.name;
  }
}

TEST(IdValues, AreThoseOfTheList) {
  EXPECT_EQ(0x18D8D10FU, CLSID_VeltLine.Data1);
  EXPECT_EQ(0xF9, CLSID_VeltLine.Data4[7]);
}

}  // namespace
}  // namespace velt
