#pragma once

// The user-defined types that only leaders and multileaders use.

#include "embedded/automation/model/UserTypes.h"

namespace velt::automation::types {

// clang-format off

inline constexpr EnumMember leaderTypeMembers[] = {
  // value  name               label
  { 0,      L"LineNoArrow",    L"Line"},
  { 1,      L"SplineNoArrow",  L"Spline"},
  { 2,      L"LineWithArrow",  L"Line with arrow"},
  { 3,      L"SplineWithArrow", L"Spline with arrow"},
};
inline constexpr UserType leaderType = {L"VeltLeaderType", L"How a leader is drawn.", VT_I4, leaderTypeMembers};

inline constexpr EnumMember leaderAnnotationMembers[] = {
  // value  name               label
  { 0,      L"Text",           L"Text"},
  { 1,      L"Tolerance",      L"Tolerance"},
  { 2,      L"Block",          L"Block"},
  { 3,      L"None",           L"None"},
};
inline constexpr UserType leaderAnnotation = {L"VeltLeaderAnnotation", L"What a leader leads to.", VT_I4, leaderAnnotationMembers};

inline constexpr EnumMember multileaderLineMembers[] = {
  // value  name               label
  { 0,      L"NoLine",         L"None"},
  { 1,      L"Straight",       L"Straight"},
  { 2,      L"Spline",         L"Spline"},
};
inline constexpr UserType multileaderLine = {L"VeltMultileaderLine", L"How the lines of a multileader are drawn.", VT_I4, multileaderLineMembers};

inline constexpr EnumMember multileaderContentMembers[] = {
  // value  name               label
  { 0,      L"NoContent",      L"None"},
  { 1,      L"BlockContent",   L"Block"},
  { 2,      L"TextContent",    L"Text"},
  { 3,      L"ToleranceContent", L"Tolerance"},
};
inline constexpr UserType multileaderContent = {L"VeltMultileaderContent", L"What a multileader shows.", VT_I4, multileaderContentMembers};

// clang-format on

}  // namespace velt::automation::types
