#pragma once

// The user-defined types that only hatches use.

#include "embedded/automation/model/UserTypes.h"

namespace velt::automation::types {

// clang-format off

inline constexpr EnumMember hatchTypeMembers[] = {
  // value  name               label
  { 0,      L"UserDefined",    L"User-defined"},
  { 1,      L"Predefined",     L"Predefined"},
  { 2,      L"Custom",         L"Custom"},
  { 3,      L"Solid",          L"Solid"},
  { 4,      L"Gradient",       L"Gradient"},
};
inline constexpr UserType hatchType = {L"VeltHatchType", L"Where a hatch has its pattern from.", VT_I4, hatchTypeMembers};

inline constexpr EnumMember islandStyleMembers[] = {
  // value  name               label
  { 0,      L"Normal",         L"Normal"},
  { 1,      L"Outer",          L"Outer"},
  { 2,      L"Ignore",         L"Ignore"},
};
inline constexpr UserType islandStyle = {L"VeltIslandStyle", L"What a hatch does with islands.", VT_I4, islandStyleMembers};

inline constexpr EnumMember isoPenWidthMembers[] = {
  // value  name               label
  {  -1,    L"PenUnknown",     L"Not ISO"},
  {  13,    L"Pen013",         L"0.13 mm"},
  {  18,    L"Pen018",         L"0.18 mm"},
  {  25,    L"Pen025",         L"0.25 mm"},
  {  35,    L"Pen035",         L"0.35 mm"},
  {  50,    L"Pen050",         L"0.50 mm"},
  {  70,    L"Pen070",         L"0.70 mm"},
  { 100,    L"Pen100",         L"1.00 mm"},
  { 140,    L"Pen140",         L"1.40 mm"},
  { 200,    L"Pen200",         L"2.00 mm"},
};
inline constexpr UserType isoPenWidth = {L"VeltIsoPenWidth", L"Pen width that an ISO pattern is drawn for, in hundredths of a millimeter.", VT_I4, isoPenWidthMembers};

// clang-format on

}  // namespace velt::automation::types
