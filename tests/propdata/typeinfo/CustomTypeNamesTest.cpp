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

constexpr int none = PropertyKind::unknownType;

struct Kind {
  int kind;
  std::vector<std::wstring> names;
};

const std::vector<Kind> kinds = {
    {PropertyKind::color, {L"VELT_COLOR", L"ACAD_COLOR", L"KELVO_COLOR"}},
    {PropertyKind::layer, {L"VELT_LAYER", L"KELVO_LAYER"}},
    {PropertyKind::distance, {L"VELT_DISTANCE", L"KELVO_DISTANCE"}},
    {PropertyKind::angle, {L"VELT_ANGLE", L"KELVO_ANGLE"}},
    {PropertyKind::noUnits, {L"VELT_NOUNITS", L"KELVO_NOUNITS"}},
    {PropertyKind::lineweight, {L"VELT_LWEIGHT", L"ACAD_LWEIGHT", L"KELVO_LWEIGHT"}},
    {PropertyKind::plotStyle, {L"VELT_PLOTSTYLE", L"KELVO_PLOTSTYLE"}},
    {PropertyKind::linetype, {L"VELT_LINETYPE", L"KELVO_LINETYPE", L"VELT_LTYPE"}},
    {PropertyKind::noEditor, {L"VELT_NULL", L"KELVO_NULL"}},
    {PropertyKind::plotStyleTable, {L"VELT_PLOTSTYLETABLE", L"KELVO_PLOTSTYLETABLE"}},
    {PropertyKind::area, {L"VELT_AREA", L"KELVO_AREA"}},
};

std::map<std::wstring, int> allNames() {
  std::map<std::wstring, int> names;
  for (const Kind& row : kinds) {
    for (const std::wstring& name : row.names)
      names[name] = row.kind;
  }
  return names;
}

int kindOf(const std::wstring& name) {
  return NameToUserdefinedType(name.c_str());
}

TEST(CustomTypeNames, EveryNameTellsItsKind) {
  const auto names = allNames();
  EXPECT_EQ(names.size(), 25u);
  for (const auto& [name, kind] : names)
    EXPECT_EQ(kindOf(name), kind) << std::string(name.begin(), name.end());
}

TEST(CustomTypeNames, NoNameMeansNoType) {
  EXPECT_EQ(NameToUserdefinedType(nullptr), none);
  EXPECT_EQ(NameToUserdefinedType(L""), none);
}

TEST(CustomTypeNames, AnyOtherNameMeansNoType) {
  for (const wchar_t* const name :
       {L"ACAD_BACKGROUND", L"COLOR", L"VELT_", L"VELT", L"_COLOR", L"VELTCOLOR", L"Color", L"VELT_COLOUR",
        L"VELT_LINEWEIGHT", L"540", L" ", L"VELT_PLOTSTYLETABLES"}) {
    EXPECT_EQ(NameToUserdefinedType(name), none);
  }
}

TEST(CustomTypeNames, ComparesWholeAndCaseSensitively) {
  for (const auto& [name, kind] : allNames()) {
    SCOPED_TRACE(std::string(name.begin(), name.end()));
    std::wstring lower = name;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](wchar_t c) { return std::towlower(static_cast<wint_t>(c)); });
    EXPECT_EQ(kindOf(lower), none);
    EXPECT_EQ(kindOf(L" " + name), none);
    EXPECT_EQ(kindOf(name + L" "), none);
    EXPECT_EQ(kindOf(name + L"_"), none);
    EXPECT_EQ(kindOf(name.substr(1)), none);
    EXPECT_EQ(kindOf(L"X" + name), none);
    // One name begins with another: it still gives its own kind, and its beginning the other's.
    const std::wstring cut = name.substr(0, name.size() - 1);
    EXPECT_EQ(kindOf(cut), none);
  }
  EXPECT_EQ(kindOf(L"VELT_PLOTSTYLE"), PropertyKind::plotStyle);
  EXPECT_EQ(kindOf(L"VELT_PLOTSTYLETABLE"), PropertyKind::plotStyleTable);
  EXPECT_EQ(kindOf(L"VELT_PLOTSTYLET"), none);
}

TEST(CustomTypeNames, Quirk_irregular_type_names) {
  EXPECT_EQ(kindOf(L"VELT_LTYPE"), PropertyKind::linetype);
  EXPECT_EQ(kindOf(L"KELVO_LTYPE"), none);
  EXPECT_EQ(kindOf(L"ACAD_LTYPE"), none);
  for (const wchar_t* const type : {L"LAYER", L"DISTANCE", L"ANGLE", L"NOUNITS", L"PLOTSTYLE", L"LINETYPE",
                                    L"NULL", L"PLOTSTYLETABLE", L"AREA"}) {
    EXPECT_EQ(kindOf(std::wstring(L"ACAD_") + type), none);
    EXPECT_NE(kindOf(std::wstring(L"VELT_") + type), none);
    EXPECT_NE(kindOf(std::wstring(L"KELVO_") + type), none);
  }
  EXPECT_EQ(kindOf(L"ACAD_COLOR"), PropertyKind::color);
  EXPECT_EQ(kindOf(L"ACAD_LWEIGHT"), PropertyKind::lineweight);
}

TEST(CustomTypeNames, ReadsTheNameUpToItsZeroCharacter) {
  EXPECT_EQ(kindOf(std::wstring(L"VELT_COLOR\0_AND_MORE", 20)), PropertyKind::color);
}

RC_GTEST_PROP(CustomTypeNames, ANameThatIsNotInTheTableIsNoType, ()) {
  const auto names = allNames();
  std::vector<std::wstring> list;
  for (const auto& [name, kind] : names)
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
  RC_ASSERT(kindOf(name) == (found == names.end() ? none : found->second));
}

}  // namespace
}  // namespace velt::tests
