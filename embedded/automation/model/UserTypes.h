#pragma once

// The user-defined types of the type library: aliases that say what a plain value means, and enumerations.
//
// A palette picks its editor by the name of the type (VELT_DISTANCE, VELT_LAYER, ...), so the names are a contract.

#include <cstdint>
#include <span>

#include "host/com/Variant.h"

namespace velt::automation {

struct EnumMember {
  std::int32_t value;
  // In the type library.
  const wchar_t* name;
  // As shown to people.
  const wchar_t* label;
};

struct UserType {
  const wchar_t* name;
  const wchar_t* help;
  // What a value of the type is: VT_I4 for every enumeration.
  VARTYPE base;
  // In the order in which they are offered; empty for an alias.
  std::span<const EnumMember> members;

  [[nodiscard]] constexpr bool isEnumeration() const { return !members.empty(); }
};

// What type a property's value has.
struct ValueType {
  // VT_USERDEFINED for a user-defined type.
  VARTYPE declared;
  // Null for a plain type.
  const UserType* user;

  // Both conversions are meant: a row names a plain type or a user-defined one in the same column.
  constexpr ValueType(VARENUM plain) : declared(plain), user(nullptr) {}  // NOLINT(*-explicit-*)
  constexpr ValueType(const UserType& type)
      : declared(VT_USERDEFINED), user(&type) {}  // NOLINT(*-explicit-*)

  // The VARTYPE of the values themselves.
  [[nodiscard]] constexpr VARTYPE base() const { return user == nullptr ? declared : user->base; }
};

// The member of that value; null when the type has none.
constexpr const EnumMember* findMember(const UserType& type, std::int64_t value) {
  for (const EnumMember& member : type.members) {
    if (member.value == value) return &member;
  }
  return nullptr;
}

// The value if a member has it, else the other one.
constexpr std::int32_t memberOr(const UserType& type, std::int64_t value, std::int32_t otherwise) {
  const EnumMember* const member = findMember(type, value);
  return member == nullptr ? otherwise : member->value;
}

// Those that several kinds of entities use.
namespace types {

// clang-format off

// --- aliases ---------------------------------------------------------------------------------------------------------
//                                          name                  help                                            base
inline constexpr UserType layerName      = {L"VELT_LAYER",        L"Name of a layer of the drawing.",             VT_BSTR, {}};
inline constexpr UserType linetypeName   = {L"VELT_LINETYPE",     L"Name of a line type of the drawing.",         VT_BSTR, {}};
inline constexpr UserType plotStyleName  = {L"VELT_PLOTSTYLE",    L"Name of a plot style.",                       VT_BSTR, {}};
inline constexpr UserType distance       = {L"VELT_DISTANCE",     L"Length in drawing units.",                    VT_R8,   {}};
inline constexpr UserType angle          = {L"VELT_ANGLE",        L"Angle in radians.",                           VT_R8,   {}};
inline constexpr UserType area           = {L"VELT_AREA",         L"Area in square drawing units.",               VT_R8,   {}};
inline constexpr UserType noUnits        = {L"VELT_NOUNITS",      L"Number without a unit.",                      VT_R8,   {}};
inline constexpr UserType color          = {L"VELT_COLOR",        L"Index of a color.",                           VT_I4,   {}};
inline constexpr UserType plotStyleTable = {L"VELT_PLOTSTYLETABLE", L"Name of a table of plot styles.",           VT_BSTR, {}};
inline constexpr UserType noEditor       = {L"VELT_NULL",         L"A value that no editor is offered for.",      VT_BSTR, {}};

// --- enumerations ----------------------------------------------------------------------------------------------------
inline constexpr EnumMember lineweightMembers[] = {
  // value  name               label
  {  -1,    L"LwByLayer",      L"ByLayer"},
  {  -2,    L"LwByBlock",      L"ByBlock"},
  {  -3,    L"LwDefault",      L"Default"},
  {   0,    L"Lw000",          L"0.00 mm"},
  {   5,    L"Lw005",          L"0.05 mm"},
  {   9,    L"Lw009",          L"0.09 mm"},
  {  13,    L"Lw013",          L"0.13 mm"},
  {  15,    L"Lw015",          L"0.15 mm"},
  {  18,    L"Lw018",          L"0.18 mm"},
  {  20,    L"Lw020",          L"0.20 mm"},
  {  25,    L"Lw025",          L"0.25 mm"},
  {  30,    L"Lw030",          L"0.30 mm"},
  {  35,    L"Lw035",          L"0.35 mm"},
  {  40,    L"Lw040",          L"0.40 mm"},
  {  50,    L"Lw050",          L"0.50 mm"},
  {  53,    L"Lw053",          L"0.53 mm"},
  {  60,    L"Lw060",          L"0.60 mm"},
  {  70,    L"Lw070",          L"0.70 mm"},
  {  80,    L"Lw080",          L"0.80 mm"},
  {  90,    L"Lw090",          L"0.90 mm"},
  { 100,    L"Lw100",          L"1.00 mm"},
  { 106,    L"Lw106",          L"1.06 mm"},
  { 120,    L"Lw120",          L"1.20 mm"},
  { 140,    L"Lw140",          L"1.40 mm"},
  { 158,    L"Lw158",          L"1.58 mm"},
  { 200,    L"Lw200",          L"2.00 mm"},
  { 211,    L"Lw211",          L"2.11 mm"},
};
inline constexpr UserType lineweight = {L"VELT_LWEIGHT", L"Line weight in hundredths of a millimeter.", VT_I4, lineweightMembers};
// The same under a name that no palette knows: palettes recognise the entity's own line weight by its DISPID.
inline constexpr UserType entityLineweight = {L"VeltLineweight", L"Line weight in hundredths of a millimeter.", VT_I4, lineweightMembers};

// clang-format on

}  // namespace types
}  // namespace velt::automation
