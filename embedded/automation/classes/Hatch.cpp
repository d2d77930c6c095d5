#include <cmath>
#include <numbers>
#include <string>

#include "dxf/Numbers.h"
#include "embedded/automation/boundaries/HatchBoundary.h"
#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/entities/General.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/hatches/HatchPattern.h"
#include "embedded/automation/hatches/HatchTypes.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Followers.h"
#include "embedded/automation/model/GradientNames.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/automation/objects/ColorObject.h"
#include "embedded/database/Colors.h"
#include "embedded/database/NameFolding.h"
#include "host/automation/IdValues.h"

namespace velt::automation {
namespace hatches {
namespace {

using platform::Category;

constexpr const char* hatch = "AcDbHatch";

// --- which rows a hatch shows depends on what it is filled with ---

constexpr std::int32_t pattern = 0;
constexpr std::int32_t solid = 1;
constexpr std::int32_t gradient = 2;
constexpr std::int32_t userPattern = 3;  // plain parallel lines at a spacing

constexpr Variants lined = variant(pattern) | variant(userPattern);

std::int32_t getVariant(const Subject& subject) {
  const database::Lens lens = subject.lens();
  if (lens.integer(450, hatch, 0) == 1) return gradient;  // a gradient is marked as solid, too
  if (lens.integer(70, hatch, 0) == 1) return solid;
  return lens.integer(76, hatch, 1) == 0 ? userPattern : pattern;
}

// --- pattern ---

std::int32_t getType(const Subject& subject) {
  constexpr std::int32_t solidType = 3;
  constexpr std::int32_t gradientType = 4;
  const std::int32_t kind = getVariant(subject);
  if (kind == solid) return solidType;
  if (kind == gradient) return gradientType;
  const std::int64_t stored = subject.lens().integer(76, hatch, 1);
  return stored >= 0 && stored <= 2 ? static_cast<std::int32_t>(stored) : 1;
}

std::wstring getPatternName(const Subject& subject) {
  return subject.lens().name(2, hatch);
}

// Between the lines of the first family. A pattern of plain lines has one family, or two that are alike.
double getSpacing(const Subject& subject) {
  const database::Lens lens = subject.lens();
  if (!lens.has(45, hatch)) return lens.real(41, hatch, 1);
  const double along = radians(lens.real(53, hatch, 0));
  return std::abs(
      cross(Vector2{std::cos(along), std::sin(along)}, {lens.real(45, hatch, 0), lens.real(46, hatch, 0)}));
}

// A pattern of the ISO family is scaled to the pen that it is drawn for.
std::int32_t getIsoPenWidth(const Subject& subject) {
  constexpr std::int32_t notIso = -1;
  const database::Lens lens = subject.lens();
  if (getPatternName(subject).find(L"_ISO") == std::wstring::npos) return notIso;
  const double hundredths = lens.real(41, hatch, 1) * 100;
  for (const EnumMember& member : types::isoPenWidth.members) {
    if (member.value > 0 && std::abs(hundredths - member.value) < 1e-6) return member.value;
  }
  return notIso;
}

// Only the height over the origin is stored in this point.
double getElevation(const Subject& subject) {
  return subject.lens().point(10, hatch)[2];
}

double getArea(const Subject& subject) {
  try {
    return hatchArea(subject.lens());
  } catch (const BoundaryError& error) {
    const std::string why = error.what();
    throw Refusal(E_FAIL, L"The area cannot be told: " + std::wstring(why.begin(), why.end()) + L".");
  }
}

std::int32_t getIslandStyle(const Subject& subject) {
  const std::int64_t stored = subject.lens().integer(75, hatch, 0);
  return stored >= 0 && stored <= 2 ? static_cast<std::int32_t>(stored) : 0;
}

Vector3 getOrigin(const Subject& subject) {
  return patternOrigin(subject.lens());
}

OwnedDispatch getBackgroundColor(const Subject& subject) {
  constexpr int numberCode = 1071;
  constexpr std::uint32_t none = 0xC8000000;
  const database::Lens lens = subject.lens();
  VkCmColor color;
  color.setColor(none);
  if (const std::optional<dxf::PairRange> range = lens.xdata("HATCHBACKGROUNDCOLOR")) {
    for (std::size_t index = range->first; index < range->first + range->count; ++index) {
      if (lens.view().code(index) != numberCode) continue;
      const auto stored = dxf::parseInteger<std::int64_t>(lens.view().value(index));
      const auto number = stored ? database::colorNumber(*stored) : std::nullopt;
      if (number) color.setColor(*number);
    }
  }
  return ColorObject::make(color);
}

void requireVariant(const Subject& subject, Variants wanted, const wchar_t* refusal) {
  if ((variant(getVariant(subject)) & wanted) == 0) throw Refusal(E_FAIL, refusal);
}

void putPatternName(const Subject& subject, const std::wstring& name) {
  if (!database::sameName(getPatternName(subject), name)) fillWithPattern(subject, name);
}

void putDouble(const Subject& subject, const bool& isDouble) {
  requireVariant(subject, variant(userPattern), L"The hatch is not filled with a user-defined pattern.");
  if ((subject.lens().integer(77, hatch, 0) == 1) != isDouble) crossPlainLines(subject, isDouble);
}

void putAssociative(const Subject& subject, const bool& isAssociative) {
  if ((subject.lens().integer(71, hatch, 0) == 1) == isAssociative) return;
  if (isAssociative) throw Refusal(reasons::boundaryWouldBeFound);
  breakAssociation(subject.drawing(), subject.record());
}

void putAngle(const Subject& subject, const double& angle) {
  requireVariant(subject, lined, L"The hatch is not filled with a pattern.");
  const double before = radians(subject.lens().real(52, hatch, 0));
  const double after = normalizedAngle(angle);
  if (normalizedAngle(before) == after) return;
  const Vector3 origin = getOrigin(subject);
  Editor(subject).real(52, hatch, storedDegreesOf(after));
  changePatternLines(subject, {origin.x, origin.y}, after - before, 1);
}

// 41 is the scale of a pattern, and the spacing of plain lines.
void putSize(const Subject& subject, double before, double after) {
  if (before == after) return;
  if (!(before > 0)) throw Refusal(E_FAIL, L"The size that the lines of the pattern have now is not known.");
  const Vector3 origin = getOrigin(subject);
  Editor(subject).real(41, hatch, after);
  changePatternLines(subject, {origin.x, origin.y}, 0, after / before);
}

void putScale(const Subject& subject, const double& scale) {
  requireVariant(subject, variant(pattern), L"The hatch is not filled with a predefined or custom pattern.");
  putSize(subject, subject.lens().real(41, hatch, 1), scale);
}

void putSpacing(const Subject& subject, const double& spacing) {
  requireVariant(subject, variant(userPattern), L"The hatch is not filled with a user-defined pattern.");
  putSize(subject, getSpacing(subject), spacing);
}

// The first point of a hatch; those after it belong to the boundary and to the places that it was made from.
void putElevation(const Subject& subject, const double& elevation) {
  if (subject.lens().integer(71, hatch, 0) != 0) {
    if (!subject.drawing().breaksAssociations()) throw Refusal(reasons::boundaryWouldMove);
    breakAssociation(subject.drawing(), subject.record());
  }
  const database::Lens lens = subject.lens();
  const std::optional<std::size_t> x = lens.find(10, hatch);
  const auto isAt = [&](std::size_t index, int code) {
    return index < lens.view().size() && lens.view().code(index) == code;
  };
  if (!x || !isAt(*x + 1, 20)) throw Refusal(E_FAIL, L"The hatch has no place for its elevation.");
  const bool isThere = isAt(*x + 2, 30);
  subject.drawing().edit(subject.record(), [&](dxf::Document& document) {
    const std::string height = dxf::formatReal(elevation);
    if (isThere) {
      document.replace(subject.record(), *x + 2, height);
    } else {
      document.insert(subject.record(), *x + 2, 30, height);
    }
  });
}

// --- gradient ---

std::wstring getGradientName(const Subject& subject) {
  return subject.lens().name(470, hatch);
}

// The place of each color (463) is stored before the color.
OwnedDispatch getGradientColor(const Subject& subject, std::size_t number) {
  const database::Lens lens = subject.lens();
  std::size_t seen = 0;
  VkCmColor color;
  bool found = false;
  lens.view().visit(hatch, [&](std::size_t index) {
    const int code = lens.view().code(index);
    const auto value = [&] {
      const auto stored = dxf::parseInteger<std::int64_t>(lens.view().value(index));
      return database::colorNumber(stored.value_or(0)).value_or(0);
    };
    if (code == 463) ++seen;
    if (seen != number) return seen < number;
    if (code == 63 && !found) color.setColor(database::colorOfIndex(value()));
    if (code == 421) color.setColor(database::colorOfRgb(value()));
    found = found || code == 63 || code == 421;
    return true;
  });
  if (!found) throw Refusal(E_FAIL, L"The gradient has no such color.");
  return ColorObject::make(color);
}

OwnedDispatch getGradientColor1(const Subject& subject) {
  return getGradientColor(subject, 1);
}
OwnedDispatch getGradientColor2(const Subject& subject) {
  return getGradientColor(subject, 2);
}

double getGradientAngle(const Subject& subject) {
  return normalizedAngle(subject.lens().real(460, hatch, 0));
}

void requireGradient(const Subject& subject) {
  requireVariant(subject, variant(gradient), L"The hatch is not filled with a gradient.");
}

void putGradientName(const Subject& subject, const std::wstring& name) {
  requireGradient(subject);
  for (const wchar_t* const known : gradientNames) {
    if (!database::sameName(known, name)) continue;
    if (!database::sameName(getGradientName(subject), known)) Editor(subject).text(470, hatch, known);
    return;
  }
  throw Refusal(E_INVALIDARG, L"There is no gradient of that name.");
}

void putGradientAngle(const Subject& subject, const double& angle) {
  requireGradient(subject);
  const double after = normalizedAngle(angle);
  if (getGradientAngle(subject) != after) Editor(subject).real(460, hatch, after);
}

constexpr Obstacle hasGradient = {
    .where = L"a gradient fills it.",
    .reasonFor =
        [](const Subject& subject) {
          return getVariant(subject) == gradient ? &reasons::filledWithGradient : nullptr;
        },
};

// clang-format off
constexpr PropertyRow rows[] = {
  // id name                label                type                category                   access                                                             writability                                  choices               weight help                                                       shown for
  {  1, L"Type",            L"Type",             types::hatchType,   Category::Pattern,         computed<getType>(),                                               readOnly(reasons::followsFromPatternName),   Choices::Enumeration, 110,   L"Where the pattern comes from."},
  {  2, L"PatternName",     L"Pattern name",     VT_BSTR,            Category::Pattern,         computed<getPatternName, putPatternName>().offering(patternNames), refusedWhere(hasGradient),                   Choices::OfClass,     120,   L"Name of the pattern: a predefined one, or one that another hatch of the drawing has."},
  {  3, L"Angle",           L"Angle",            VT_R8,              Category::Pattern,         writtenBy<putAngle>(storedDirection(52, hatch)),                   writable,                                    Choices::None,        130,   L"How far the pattern is turned.",                         lined},
  {  4, L"HatchScale",      L"Scale",            VT_R8,              Category::Pattern,         writtenBy<putScale>(storedReal(41, hatch, 1)).positive(),          writable,                                    Choices::None,        140,   L"Scale of the pattern.",                                  variant(pattern)},
  {  5, L"Spacing",         L"Spacing",          VT_R8,              Category::Pattern,         computed<getSpacing, putSpacing>().positive(),                     writable,                                    Choices::None,        150,   L"Distance of the lines.",                                 variant(userPattern)},
  {  6, L"ISOPenWidth",     L"ISO pen width",    types::isoPenWidth, Category::Pattern,         computed<getIsoPenWidth>(),                                        readOnly(reasons::isScaleInAnotherForm),     Choices::Enumeration, 160,   L"Pen width that an ISO pattern is drawn for.",            variant(pattern)},
  {  7, L"Double",          L"Double",           VT_BOOL,            Category::Pattern,         writtenBy<putDouble>(storedBit(77, hatch, 1)),                     writable,                                    Choices::None,        170,   L"Whether a second family crosses the lines.",             variant(userPattern)},
  {  8, L"Origin",          L"Origin",           VT_VARIANT,         Category::Pattern,         computedPoint<getOrigin>(),                                        readOnly(reasons::patternLinesWouldFollow),  Choices::None,        180,   L"Where the pattern begins.",                              lined},
  {  9, L"BackgroundColor", L"Background color", VT_DISPATCH,        Category::Pattern,         computed<getBackgroundColor>(),                                    readOnly(reasons::dataOfAnotherApplication), Choices::None,        190,   L"Color between the lines.",                               lined},
  { 10, L"Associative",     L"Associative",      VT_BOOL,            Category::Pattern,         writtenBy<putAssociative>(storedBit(71, hatch, 1)).keepingShape(), writable,                                    Choices::None,        200,   L"Whether the hatch follows the entities that it was made from; that can be given up, not got back."},
  { 11, L"IslandStyle",     L"Island detection", types::islandStyle, Category::Pattern,         computed<getIslandStyle>(),                                        readOnly(reasons::boundaryStoredForStyle),   Choices::Enumeration, 210,   L"What the hatch does with islands."},
  { 12, L"GradientName",    L"Gradient name",    VT_BSTR,            OwnCategory::Gradient,     computed<getGradientName, putGradientName>().keepingShape(),       writable,                                    Choices::Gradients,   220,   L"Name of the gradient.",                                  variant(gradient)},
  { 13, L"GradientAngle",   L"Gradient angle",   types::angle,       OwnCategory::Gradient,     computed<getGradientAngle, putGradientAngle>().keepingShape(),     writable,                                    Choices::None,        230,   L"How far the gradient is turned.",                        variant(gradient)},
  { 14, L"GradientColor1",  L"Color 1",          VT_DISPATCH,        OwnCategory::Gradient,     computed<getGradientColor1>(),                                     readOnly(reasons::nearestColorStored),       Choices::None,        240,   L"Color that the gradient begins with.",                   variant(gradient)},
  { 15, L"GradientColor2",  L"Color 2",          VT_DISPATCH,        OwnCategory::Gradient,     computed<getGradientColor2>(),                                     readOnly(reasons::nearestColorStored),       Choices::None,        250,   L"Color that the gradient ends with.",                     variant(gradient)},
  { 16, L"Elevation",       L"Elevation",        VT_R8,              Category::Geometry,        computed<getElevation, putElevation>(),                            writable,                                    Choices::None,        260,   L"Height of the hatch over the origin, along its normal."},
  { 17, L"Area",            L"Area",             types::area,        Category::Geometry,        computed<getArea>(),                                               readOnly(reasons::followsFromBoundary),      Choices::None,        270,   L"What is filled, without the islands."},
  { 18, L"Normal",          L"Normal",           VT_VARIANT,         Category::Visualization3D, computedPoint<getNormal>(),                                        readOnly(reasons::boundaryWouldFollow),      Choices::None,        280,   L"Upright on the plane of the hatch."},
};
// clang-format on

}  // namespace
}  // namespace hatches

constinit const AutomationClass classes::VeltHatch = {
    .clsid = CLSID_VeltHatch,
    .name = L"VeltHatch",
    .label = L"Hatch",
    .dxfName = "HATCH",
    .help = L"A filled area.",
    .general = &entityRows,
    .rows = hatches::rows,
    .variant = hatches::getVariant,
};

}  // namespace velt::automation
