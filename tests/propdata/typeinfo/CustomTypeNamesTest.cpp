#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cwctype>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "propdata/VeltPropData.h"

namespace velt::tests {
namespace {

constexpr int none = 551;

struct Code {
  int code;
  std::vector<std::wstring> names;
};

const std::vector<Code> codes = {
    {540, {L"VELT_COLOR", L"ACAD_COLOR", L"KELVO_COLOR"}},
    {541, {L"VELT_LAYER", L"KELVO_LAYER"}},
    {542, {L"VELT_DISTANCE", L"KELVO_DISTANCE"}},
    {543, {L"VELT_ANGLE", L"KELVO_ANGLE"}},
    {544, {L"VELT_NOUNITS", L"KELVO_NOUNITS"}},
    {545, {L"VELT_LWEIGHT", L"ACAD_LWEIGHT", L"KELVO_LWEIGHT"}},
    {546, {L"VELT_PLOTSTYLE", L"KELVO_PLOTSTYLE"}},
    {547, {L"VELT_LINETYPE", L"KELVO_LINETYPE", L"VELT_LTYPE"}},
    {548, {L"VELT_NULL", L"KELVO_NULL"}},
    {549, {L"VELT_PLOTSTYLETABLE", L"KELVO_PLOTSTYLETABLE"}},
    {550, {L"VELT_AREA", L"KELVO_AREA"}},
};

std::map<std::wstring, int> allNames() {
  std::map<std::wstring, int> names;
  for (const Code& row : codes) {
    for (const std::wstring& name : row.names)
      names[name] = row.code;
  }
  return names;
}

int codeOf(const std::wstring& name) {
  return NameToUserdefinedType(name.c_str());
}

TEST(CustomTypeNames, EveryNameGivesItsCode) {
  const auto names = allNames();
  EXPECT_EQ(names.size(), 25u);
  for (const auto& [name, code] : names)
    EXPECT_EQ(codeOf(name), code) << std::string(name.begin(), name.end());
}

TEST(CustomTypeNames, NoNameIsNoType) {
  EXPECT_EQ(NameToUserdefinedType(nullptr), none);
  EXPECT_EQ(NameToUserdefinedType(L""), none);
}

TEST(CustomTypeNames, AnyOtherNameIsNoType) {
  for (const wchar_t* const name :
       {L"ACAD_BACKGROUND", L"COLOR", L"VELT_", L"VELT", L"_COLOR", L"VELTCOLOR", L"Color", L"VELT_COLOUR",
        L"VELT_LINEWEIGHT", L"540", L" ", L"VELT_PLOTSTYLETABLES"}) {
    EXPECT_EQ(NameToUserdefinedType(name), none);
  }
}

TEST(CustomTypeNames, ComparesWholeAndCaseSensitively) {
  for (const auto& [name, code] : allNames()) {
    SCOPED_TRACE(std::string(name.begin(), name.end()));
    std::wstring lower = name;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](wchar_t c) { return std::towlower(static_cast<wint_t>(c)); });
    EXPECT_EQ(codeOf(lower), none);
    EXPECT_EQ(codeOf(L" " + name), none);
    EXPECT_EQ(codeOf(name + L" "), none);
    EXPECT_EQ(codeOf(name + L"_"), none);
    EXPECT_EQ(codeOf(name.substr(1)), none);
    EXPECT_EQ(codeOf(L"X" + name), none);
    // One name begins with another: it still gives its own code, and its beginning the other's.
    const std::wstring cut = name.substr(0, name.size() - 1);
    EXPECT_EQ(codeOf(cut), none);
  }
  EXPECT_EQ(codeOf(L"VELT_PLOTSTYLE"), 546);
  EXPECT_EQ(codeOf(L"VELT_PLOTSTYLETABLE"), 549);
  EXPECT_EQ(codeOf(L"VELT_PLOTSTYLET"), none);
}

TEST(CustomTypeNames, Quirk_irregular_type_names) {
  EXPECT_EQ(codeOf(L"VELT_LTYPE"), 547);
  EXPECT_EQ(codeOf(L"KELVO_LTYPE"), none);
  EXPECT_EQ(codeOf(L"ACAD_LTYPE"), none);
  for (const wchar_t* const kind : {L"LAYER", L"DISTANCE", L"ANGLE", L"NOUNITS", L"PLOTSTYLE", L"LINETYPE",
                                    L"NULL", L"PLOTSTYLETABLE", L"AREA"}) {
    EXPECT_EQ(codeOf(std::wstring(L"ACAD_") + kind), none);
    EXPECT_NE(codeOf(std::wstring(L"VELT_") + kind), none);
    EXPECT_NE(codeOf(std::wstring(L"KELVO_") + kind), none);
  }
  EXPECT_EQ(codeOf(L"ACAD_COLOR"), 540);
  EXPECT_EQ(codeOf(L"ACAD_LWEIGHT"), 545);
}

TEST(CustomTypeNames, ReadsTheNameUpToItsZeroCharacter) {
  EXPECT_EQ(codeOf(std::wstring(L"VELT_COLOR\0_AND_MORE", 20)), 540);
}

RC_GTEST_PROP(CustomTypeNames, ANameThatIsNotInTheTableIsNoType, ()) {
  const auto names = allNames();
  std::vector<std::wstring> list;
  for (const auto& [name, code] : names)
    list.push_back(name);
  std::wstring name = *rc::gen::elementOf(list);
  const auto at = *rc::gen::inRange<std::size_t>(0, name.size());
  switch (*rc::gen::inRange(0, 3)) {
    case 0:
      name[at] = static_cast<wchar_t>(*rc::gen::inRange(1, 0x10FFFF));
      break;
    case 1:
      name.erase(at, 1);
      break;
    default:
      name.insert(at, 1, static_cast<wchar_t>(*rc::gen::inRange(1, 0x10FFFF)));
      break;
  }
  const auto found = names.find(name);
  RC_ASSERT(codeOf(name) == (found == names.end() ? none : found->second));
}

}  // namespace
}  // namespace velt::tests
