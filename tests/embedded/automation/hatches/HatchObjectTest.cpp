#include "embedded/automation/hatches/HatchObject.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/Automation.h"

namespace velt::automation {
namespace {

using namespace test;

class HatchObjectTest : public ::testing::Test {
 protected:
  Bound hatch(Pairs pairs) {
    drawing = Sample().entity("HATCH", pairs).open();
    return Bound(*drawing, 0);
  }
  INT variantOf(Pairs pairs) {
    INT answer = 77;
    EXPECT_EQ(S_OK, hatch(pairs).as<IVeltHatch>()->get_PropertyVariant(&answer));
    return answer;
  }

  bool registryMade = (makeRegistry(), true);
  std::unique_ptr<Drawing> drawing;
};

TEST_F(HatchObjectTest, TellsItsVariantAtTheNinetyThirdEntry) {
  // Callers find it by its place in the function table, counting QueryInterface as the first.
  const auto face = hatch({{70, "1"}}).as<IVeltHatch>();
  using Getter = HRESULT (*)(IVeltHatch*, INT*);
  const auto* table = *static_cast<Getter**>(static_cast<void*>(face.get()));
  INT answer = 77;
  EXPECT_EQ(S_OK, table[93 - 1](face.get(), &answer));
  EXPECT_EQ(1, answer);
}

TEST_F(HatchObjectTest, TheVariantIsWhatItIsFilledWith) {
  EXPECT_EQ(0, variantOf({{70, "0"}, {76, "1"}}));
  EXPECT_EQ(0, variantOf({{70, "0"}, {76, "2"}}));
  EXPECT_EQ(1, variantOf({{70, "1"}, {76, "1"}}));
  EXPECT_EQ(2, variantOf({{70, "1"}, {76, "1"}, {450, "1"}})) << "a gradient is marked as solid, too";
  EXPECT_EQ(3, variantOf({{70, "0"}, {76, "0"}}));
  EXPECT_EQ(0, variantOf({}));
}

TEST_F(HatchObjectTest, AnUnboundHatchLeavesTheVariantAlone) {
  void* made = nullptr;
  ASSERT_EQ(S_OK, TqAutoCreateInstance(CLSID_VeltHatch, nullptr, CLSCTX_INPROC_SERVER, velt::IID_IVeltHatch,
                                       &made));
  const auto face = InterfaceHolder<IVeltHatch>::owning(static_cast<IVeltHatch*>(made));
  INT answer = -1;
  EXPECT_EQ(E_UNEXPECTED, face->get_PropertyVariant(&answer));
  EXPECT_EQ(-1, answer);
  EXPECT_EQ(E_POINTER, face->get_PropertyVariant(nullptr));
}

TEST_F(HatchObjectTest, TheHostsOtherEntriesOnlyHoldTheirPlace) {
  const auto face = hatch({}).as<IVeltHatch>();
  EXPECT_EQ(E_NOTIMPL, face->hostSlot7());
  EXPECT_EQ(E_NOTIMPL, face->hostSlot50());
  EXPECT_EQ(E_NOTIMPL, face->hostSlot91());
}

TEST_F(HatchObjectTest, IsAnAutomationObjectLikeAllOthers) {
  const Balance balance;
  const Bound made = hatch({{2, "ANSI31"}});
  EXPECT_EQ(L"ANSI31", made.text(L"PatternName"));
  const auto face = made.as<IVeltHatch>();
  EXPECT_EQ(static_cast<void*>(&made.dispatch()), static_cast<void*>(face.get()));
}

TEST_F(HatchObjectTest, RowsThatDoNotApplyAreHidden) {
  struct Case {
    const wchar_t* row;
    int pattern, solid, gradient, user;
  };
  // clang-format off
  const Case cases[] = {
      // row                 pattern  solid  gradient  user
      {L"Type",              1,       1,     1,        1},
      {L"PatternName",       1,       1,     1,        1},
      {L"Angle",             1,       0,     0,        1},
      {L"HatchScale",        1,       0,     0,        0},
      {L"Spacing",           0,       0,     0,        1},
      {L"ISOPenWidth",       1,       0,     0,        0},
      {L"Double",            0,       0,     0,        1},
      {L"Origin",            1,       0,     0,        1},
      {L"BackgroundColor",   1,       0,     0,        1},
      {L"GradientName",      0,       0,     1,        0},
      {L"GradientAngle",     0,       0,     1,        0},
      {L"GradientColor1",    0,       0,     1,        0},
      {L"GradientColor2",    0,       0,     1,        0},
      {L"Area",              1,       1,     1,        1},
      {L"Elevation",         1,       1,     1,        1},
      {L"Layer",             1,       1,     1,        1},
  };
  // clang-format on
  for (const Case& row : cases) {
    EXPECT_EQ(row.pattern, hatch({{76, "1"}}).shown(row.row)) << row.row;
    EXPECT_EQ(row.solid, hatch({{70, "1"}}).shown(row.row)) << row.row;
    EXPECT_EQ(row.gradient, hatch({{450, "1"}}).shown(row.row)) << row.row;
    EXPECT_EQ(row.user, hatch({{76, "0"}}).shown(row.row)) << row.row;
  }
}

}  // namespace
}  // namespace velt::automation
