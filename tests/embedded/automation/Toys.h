#pragma once

// A class of automation objects that no drawing knows, for testing what all classes have in common.

#include <cmath>
#include <string>
#include <vector>

#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/AutomationObject.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/automation/objects/ColorObject.h"
#include "host/automation/IdValues.h"
#include "tests/embedded/automation/Automation.h"

namespace velt::automation::test {

// What the computed toys give, and what was put to them last.
struct ToyState {
  // Not a number: cannot be read.
  double real = 1.5;
  std::int32_t variant = 0;
  std::size_t groups = 2;
  std::int32_t choice = 20;
  Vector3 point{1, 2, 3};
  std::map<std::size_t, double> elements;
  std::vector<double> put;
  // A put leaves what it is read as.
  bool forgets = false;
};
inline ToyState toy;

inline double getToyReal(const Subject&) {
  if (std::isnan(toy.real)) throw Refusal(E_FAIL, L"There is no number yet.");
  return toy.real;
}
inline void putToyReal(const Subject&, const double& value) {
  toy.put.push_back(value);
  if (!toy.forgets) toy.real = value;
}
// Refuses when it has changed something already.
inline void putToyHalf(const Subject& subject, const double& value) {
  Editor(subject).text(8, "*", L"half");
  if (value > 0) throw Refusal(E_FAIL, L"Only half of it.");
  if (!toy.forgets) toy.real = value;
}
inline double getToyRefusal(const Subject&) {
  throw Refusal(E_FAIL, L"Not today.");
}
inline double getToyOverflow(const Subject&) {
  throw std::bad_alloc();
}
inline double getToyMistake(const Subject&) {
  throw std::logic_error("a mistake");
}
inline std::int32_t getToyChoice(const Subject&) {
  return toy.choice;
}
inline void putToyChoice(const Subject&, const std::int32_t& value) {
  toy.put.push_back(value);
  toy.choice = value;
}
inline std::wstring getToyText(const Subject&) {
  return L"";
}
inline Vector3 getToyPoint(const Subject&) {
  return toy.point;
}
// Its coordinates are kept as long as the drawing stays as it is, so this edits the drawing, too.
inline void putToyPoint(const Subject& subject, const Vector3& value) {
  Editor(subject).real(10, "*", value.x);
  toy.put = {value.x, value.y, value.z};
  if (!toy.forgets) toy.point = value;
}
inline OwnedDispatch getToyObject(const Subject&) {
  return ColorObject::make({});
}
inline std::int32_t getToyVariant(const Subject&) {
  return toy.variant;
}
inline bool getToyWrongType(const Subject&) {
  return true;
}

inline constexpr const wchar_t* toyElementLabels[] = {L"First", L"Second"};
inline std::size_t getToyGroups(const Subject&, const PropertyRow&) {
  return toy.groups;
}
inline double getToyElement(const Subject&, const PropertyRow&, std::size_t element) {
  const auto kept = toy.elements.find(element);
  return kept != toy.elements.end() ? kept->second : 100.0 + static_cast<double>(element);
}
inline void putToyElement(const Subject&, const PropertyRow&, std::size_t element, double value) {
  toy.put = {static_cast<double>(element), value};
  if (!toy.forgets) toy.elements[element] = value;
}
inline constexpr ElementAccess toyElements = {
    .labels = toyElementLabels,
    .grouping = 7,
    .groups = getToyGroups,
    .get = getToyElement,
    .put = putToyElement,
};

constexpr Access toyGroups() {
  Access made = computed<getToyPoint, putToyPoint>();
  made.elements = &toyElements;
  return made;
}

// Stands in the way while the toys' number is below 0.
inline constexpr Obstacle toyObstacle = {
    .where = L"the toy is below 0.",
    .reasonFor = [](const Subject&) { return toy.real < 0 ? &reasons::followsFromBoth : nullptr; },
};

// A row of that access, for what looks at nothing else of it.
inline PropertyRow toyRow(const Access& access, const ValueType& type = VT_R8,
                          const Writability& writability = writable) {
  return {
      .dispId = 1,
      .name = L"Toy",
      .label = L"Toy",
      .type = type,
      .category = platform::Category::Misc,
      .access = access,
      .writability = writability,
      .choices = Choices::None,
      .weight = 0,
      .help = L"Help for the toy.",
  };
}

inline constexpr EnumMember toyMembers[] = {{10, L"Ten", L"ten of them"}, {20, L"Twenty", L"twenty of them"}};
inline constexpr UserType toyEnumeration = {L"ToyEnumeration", L"Tens.", VT_I4, toyMembers};

// clang-format off
inline constexpr PropertyRow toyGeneralRows[] = {
  // id name       label             type   category                     access                  writability                      choices        weight help
  { 90, L"Shared", L"Shared by all", VT_R8, platform::Category::General, computed<getToyReal>(), readOnly(reasons::neverChanges), Choices::None,   5,   L"Inherited."},
};
inline constexpr PropertyRow toyRows[] = {
  // id name             label             type              category                      access                                             writability                      choices               weight help                     shown for                flags
  {  7, L"Real",         L"A real",        VT_R8,            platform::Category::Geometry, computed<getToyReal, putToyReal>(),                writable,                        Choices::None,         40,   L"Help for the real."},
  {  3, L"Choice",       L"A choice",      toyEnumeration,   platform::Category::Misc,     computed<getToyChoice>(),                          readOnly(reasons::neverChanges), Choices::Enumeration,  30,   L"Help for the choice."},
  {  5, L"Text",         L"A text",        types::layerName, OwnCategory::Gradient,        computed<getToyText>(),                            readOnly(reasons::neverChanges), Choices::Layers,      -20,   L""},
  { 11, L"Spot",         L"Spot",          VT_VARIANT,       platform::Category::Geometry, computedPoint<getToyPoint, putToyPoint>(),         writable,                        Choices::None,          0,   L"A point."},
  { 12, L"Groups",       L"Groups",        VT_VARIANT,       platform::Category::Geometry, toyGroups(),                                       writable,                        Choices::None,          0,   L"Grouped elements."},
  { 13, L"Color",       L"A color",      VT_DISPATCH,      platform::Category::General,  computed<getToyObject>(),                          readOnly(reasons::neverChanges), Choices::Colors,        0,   L"An object."},
  { 21, L"Hidden",       L"Hidden",        VT_R8,            platform::Category::Misc,     computed<getToyReal, putToyReal>(),                writable,                        Choices::None,          0,   L"",                     everyVariant,            rowHidden},
  { 22, L"NonBrowsable", L"Non-browsable", VT_R8,            platform::Category::Misc,     computed<getToyReal>(),                            readOnly(reasons::neverChanges), Choices::None,          0,   L"",                     everyVariant,            rowNonBrowsable},
  { 23, L"Sometimes",    L"Sometimes",     VT_R8,            platform::Category::Misc,     computed<getToyReal>(),                            readOnly(reasons::neverChanges), Choices::None,          0,   L"",                     variant(1) | variant(3)},
  { 31, L"Refusal",      L"Refusal",       VT_R8,            platform::Category::Misc,     computed<getToyRefusal>(),                         readOnly(reasons::neverChanges), Choices::None,          0,   L""},
  { 32, L"Overflow",     L"Overflow",      VT_R8,            platform::Category::Misc,     computed<getToyOverflow>(),                        readOnly(reasons::neverChanges), Choices::None,          0,   L""},
  { 33, L"Mistake",      L"Mistake",       VT_R8,            platform::Category::Misc,     computed<getToyMistake>(),                         readOnly(reasons::neverChanges), Choices::None,          0,   L""},
  { 35, L"Half",         L"Half",          VT_R8,            platform::Category::Misc,     computed<getToyReal, putToyHalf>(),                writable,                        Choices::None,          0,   L""},
  { 36, L"Newer",        L"Newer",         VT_R8,            platform::Category::Misc,     computed<getToyReal, putToyReal>().from("AC1018"), writable,                        Choices::None,          0,   L""},
  { 37, L"Tens",         L"Tens",          toyEnumeration,   platform::Category::Misc,     computed<getToyChoice, putToyChoice>(),            writable,                        Choices::Enumeration,   0,   L""},
  { 34, L"WrongType",    L"Wrong type",    VT_R8,            platform::Category::Misc,     computed<getToyWrongType>(),                       readOnly(reasons::neverChanges), Choices::None,          0,   L""},
  { 38, L"Stored",       L"Stored",        VT_R8,            platform::Category::Misc,     storedReal(40, "*"),                               readOnly(reasons::neverChanges), Choices::None,          0,   L""},
  { 39, L"StoredPoint",  L"Stored point",  VT_VARIANT,       platform::Category::Misc,     worldPoint(10, "*"),                               readOnly(reasons::neverChanges), Choices::None,          0,   L""},
  { 40, L"Told",         L"Told",          VT_R8,            platform::Category::Misc,     computed<getToyReal, putToyReal>(),                readOnlyWhere(toyObstacle),      Choices::None,          0,   L"Help for both."},
  { 41, L"Untold",       L"Untold",        VT_R8,            platform::Category::Misc,     computed<getToyReal, putToyReal>(),                refusedWhere(toyObstacle),       Choices::None,          0,   L"Help for both."},
};
// clang-format on

inline const std::span<const PropertyRow> toyGeneral = toyGeneralRows;
inline const AutomationClass toyClass = {
    .clsid = CLSID_VeltTable,
    .name = L"VeltToy",
    .label = L"Toy",
    .dxfName = "TOY",
    .help = L"A toy.",
    .general = &toyGeneral,
    .rows = toyRows,
    .variant = getToyVariant,
};
inline const AutomationClass otherToyClass = {
    .clsid = CLSID_VeltLeader,
    .name = L"VeltOtherToy",
    .label = L"Other toy",
    .dxfName = "",
    .help = L"Another toy.",
    .general = &toyGeneral,
};
inline constexpr const AutomationClass* toyClasses[] = {&toyClass, &otherToyClass};

// A drawing with a toy and a line, the toys' registry, and an object bound to the toy. The ledger must balance at its
// end.
class ToyTest : public ::testing::Test {
 protected:
  ToyTest() { toy = {}; }

  [[nodiscard]] Bound unbound(const CLSID& clsid = CLSID_VeltTable) const {
    return Bound(InterfaceHolder<IDispatch>::owning(com::makeObject<EntityObject>(*registry.find(clsid))));
  }
  [[nodiscard]] Bound bound() const {
    Bound made = unbound();
    VkDbObjectId id = drawing->entities()[0];
    EXPECT_EQ(S_OK, made.as<IVeltBaseObject>()->SetObjectId(id, VkDbObjectId::kNull, nullptr));
    return made;
  }

  Balance balance;
  ClassRegistry registry{L"Toys", toyClasses};
  std::unique_ptr<Drawing> drawing =
      Sample().layer("0").layer("Walls").entity("TOY", {{8, "Walls"}}).entity("LINE", {{8, "0"}}).open();
};

}  // namespace velt::automation::test
