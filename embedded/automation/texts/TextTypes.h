#pragma once

// The user-defined types that only texts use.

#include "embedded/automation/model/UserTypes.h"

namespace velt::automation::types {

// clang-format off

inline constexpr EnumMember textJustificationMembers[] = {
  // value  name               label
  {  0,     L"Left",           L"Left"},
  {  1,     L"Center",         L"Center"},
  {  2,     L"Right",          L"Right"},
  {  3,     L"Aligned",        L"Aligned"},
  {  4,     L"Middle",         L"Middle"},
  {  5,     L"Fit",            L"Fit"},
  {  6,     L"TopLeft",        L"Top left"},
  {  7,     L"TopCenter",      L"Top center"},
  {  8,     L"TopRight",       L"Top right"},
  {  9,     L"MiddleLeft",     L"Middle left"},
  { 10,     L"MiddleCenter",   L"Middle center"},
  { 11,     L"MiddleRight",    L"Middle right"},
  { 12,     L"BottomLeft",     L"Bottom left"},
  { 13,     L"BottomCenter",   L"Bottom center"},
  { 14,     L"BottomRight",    L"Bottom right"},
};
inline constexpr UserType textJustification = {L"VeltTextJustification", L"Where the points of a text lie against it.", VT_I4, textJustificationMembers};

inline constexpr EnumMember attachmentMembers[] = {
  // value  name               label
  { 1,      L"TopLeft",        L"Top left"},
  { 2,      L"TopCenter",      L"Top center"},
  { 3,      L"TopRight",       L"Top right"},
  { 4,      L"MiddleLeft",     L"Middle left"},
  { 5,      L"MiddleCenter",   L"Middle center"},
  { 6,      L"MiddleRight",    L"Middle right"},
  { 7,      L"BottomLeft",     L"Bottom left"},
  { 8,      L"BottomCenter",   L"Bottom center"},
  { 9,      L"BottomRight",    L"Bottom right"},
};
inline constexpr UserType attachment = {L"VeltAttachment", L"Where the insertion point lies against a text box.", VT_I4, attachmentMembers};

inline constexpr EnumMember drawingDirectionMembers[] = {
  // value  name               label
  { 1,      L"LeftToRight",    L"Horizontal"},
  { 3,      L"TopToBottom",    L"Vertical"},
  { 5,      L"ByStyle",        L"By style"},
};
inline constexpr UserType drawingDirection = {L"VeltDrawingDirection", L"How the lines of a text run.", VT_I4, drawingDirectionMembers};

inline constexpr EnumMember lineSpacingStyleMembers[] = {
  // value  name               label
  { 1,      L"AtLeast",        L"At least"},
  { 2,      L"Exactly",        L"Exactly"},
};
inline constexpr UserType lineSpacingStyle = {L"VeltLineSpacingStyle", L"Whether tall characters push lines apart.", VT_I4, lineSpacingStyleMembers};

// clang-format on

}  // namespace velt::automation::types
