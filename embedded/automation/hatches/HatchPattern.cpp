#include "embedded/automation/hatches/HatchPattern.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <numbers>
#include <optional>
#include <set>
#include <utility>

#include "dxf/Numbers.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/hatches/PredefinedPatterns.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/LastAsked.h"
#include "embedded/database/NameFolding.h"

namespace velt::automation {
namespace {

constexpr const char* hatchSubclass = "AcDbHatch";

// Where one family of parallel lines stands in its record.
struct Family {
  std::size_t angle = 0;
  std::optional<std::size_t> baseX{}, baseY{}, offsetX{}, offsetY{};
  std::vector<std::size_t> dashes{};
};

std::vector<Family> familiesOf(const dxf::RecordView& view) {
  std::vector<Family> families;
  view.visit(hatchSubclass, [&](std::size_t index) {
    const int code = view.code(index);
    if (code == 53) families.push_back({.angle = index});
    if (families.empty()) return true;
    Family& family = families.back();
    if (code == 43) family.baseX = index;
    if (code == 44) family.baseY = index;
    if (code == 45) family.offsetX = index;
    if (code == 46) family.offsetY = index;
    if (code == 49) family.dashes.push_back(index);
    return true;
  });
  return families;
}

// The numbers of one record, read and replaced.
class Numbers {
 public:
  Numbers(dxf::Document& document, std::uint32_t record) : document_(document), record_(record) {}

  [[nodiscard]] double operator[](std::size_t pair) const {
    const auto number = dxf::parseReal(document_.view(record_).value(pair));
    if (!number) throw Refusal(E_FAIL, L"The stored lines of the pattern are damaged.");
    return *number;
  }
  void put(std::size_t pair, double value) {
    if (!std::isfinite(value))
      throw Refusal(DISP_E_OVERFLOW, L"The lines of the pattern would become too large.");
    document_.replace(record_, pair, dxf::formatReal(value));
  }

 private:
  dxf::Document& document_;
  std::uint32_t record_;
};

Vector2 turned(Vector2 arm, double angle) {
  return std::cos(angle) * arm + std::sin(angle) * perpendicular(arm);
}

void change(Numbers& numbers, const Family& family, const Vector2& origin, double angle, double factor) {
  if (!family.baseX || !family.baseY || !family.offsetX || !family.offsetY) {
    throw Refusal(E_FAIL, L"The stored lines of the pattern are incomplete.");
  }
  const bool isTurned = angle < 0 || angle > 0;
  const auto moved = [&](Vector2 arm) { return factor * (isTurned ? turned(arm, angle) : arm); };
  const Vector2 base = origin + moved(Vector2{numbers[*family.baseX], numbers[*family.baseY]} - origin);
  const Vector2 offset = moved({numbers[*family.offsetX], numbers[*family.offsetY]});
  if (isTurned) {
    numbers.put(family.angle, storedDegreesOf(normalizedAngle(radians(numbers[family.angle]) + angle)));
  }
  numbers.put(*family.baseX, base.x);
  numbers.put(*family.baseY, base.y);
  numbers.put(*family.offsetX, offset.x);
  numbers.put(*family.offsetY, offset.y);
  for (const std::size_t dash : family.dashes)
    numbers.put(dash, factor * numbers[dash]);
}

// --- other patterns ---

constexpr std::int64_t plainLines = 0;
constexpr std::int64_t predefined = 1;
constexpr double millimetresOfInch = 25.4;

// A name may end with the island style that the hatch was made for: "ANSI31,_O".
std::wstring patternNameOf(const database::Lens& hatch) {
  const std::wstring name = hatch.name(2, hatchSubclass);
  return name.substr(0, name.find(L",_"));
}

// How a pattern lies in a hatch.
struct Placing {
  Vector2 origin{};
  // In radians.
  double angle = 0;
  double scale = 1;
};

bool isFilled(const database::Lens& hatch) {
  return hatch.integer(70, hatchSubclass, 0) == 1;
}

std::int64_t kindOf(const database::Lens& hatch) {
  return hatch.integer(76, hatchSubclass, predefined);
}

Placing placingOf(const database::Lens& hatch) {
  const Vector3 origin = patternOrigin(hatch);
  return {{origin.x, origin.y}, radians(hatch.real(52, hatchSubclass, 0)), hatch.real(41, hatchSubclass, 1)};
}

double realAt(const dxf::RecordView& view, std::optional<std::size_t> pair) {
  const auto number = pair ? dxf::parseReal(view.value(*pair)) : std::nullopt;
  if (!number) throw Refusal(E_FAIL, L"The stored lines of the pattern are damaged.");
  return *number;
}

// As they lie in the hatch: angles included, and steps in its plane.
std::vector<PatternLine> storedLines(const database::Lens& hatch) {
  std::vector<PatternLine> lines;
  const dxf::RecordView& view = hatch.view();
  for (const Family& family : familiesOf(view)) {
    PatternLine& line = lines.emplace_back();
    line.angle = realAt(view, family.angle);
    line.base = {realAt(view, family.baseX), realAt(view, family.baseY)};
    line.step = {realAt(view, family.offsetX), realAt(view, family.offsetY)};
    for (const std::size_t dash : family.dashes)
      line.dashes.push_back(realAt(view, dash));
  }
  return lines;
}

// Without what rounding leaves of a coordinate that is 0.
Vector2 turnedClean(Vector2 arm, double angle) {
  const Vector2 exact = turned(arm, angle);
  const double noise = 4 * std::numeric_limits<double>::epsilon() * length(arm);
  const auto clean = [noise](double coordinate) { return std::abs(coordinate) <= noise ? 0 : coordinate; };
  return {clean(exact.x), clean(exact.y)};
}

// The lines of one hatch as they lie in another one.
std::vector<PatternLine> moved(std::vector<PatternLine> lines, const Placing& from, const Placing& to) {
  if (!(from.scale > 0) || !(to.scale > 0)) {
    throw Refusal(E_FAIL, L"The scale of the pattern is not known.");
  }
  const double angle = to.angle - from.angle;
  const double factor = to.scale / from.scale;
  for (PatternLine& line : lines) {
    line.angle = storedDegreesOf(normalizedAngle(radians(line.angle) + angle));
    line.base = to.origin + factor * turnedClean(line.base - from.origin, angle);
    line.step = factor * turnedClean(line.step, angle);
    for (double& dash : line.dashes)
      dash = factor * dash;
  }
  return lines;
}

// Steps of a predefined pattern are along and across its lines; of stored ones they are not.
std::vector<PatternLine> asStored(std::vector<PatternLine> lines) {
  for (PatternLine& line : lines)
    line.step = turnedClean(line.step, radians(line.angle));
  return lines;
}

// The first entity stands for its drawing.
VkDbObjectId idOf(const database::Drawing& drawing) {
  return drawing.entities().front();
}

// The records of the drawing's hatches, which stay what they are for as long as it is open.
const std::vector<std::uint32_t>& hatchesOf(const database::Drawing& drawing) {
  thread_local VkDbObjectId known = VkDbObjectId::kNull;
  thread_local std::vector<std::uint32_t> hatches;
  if (known == idOf(drawing)) return hatches;
  known = VkDbObjectId::kNull;
  hatches.clear();
  for (std::uint32_t record = 0; record < drawing.document().recordCount(); ++record) {
    if (drawing.view(record).type() == "HATCH") hatches.push_back(record);
  }
  known = idOf(drawing);
  return hatches;
}

// Calls the function for every hatch of the drawing, until it answers true.
template <class Function>
void forEachHatch(const database::Drawing& drawing, Function function) {
  for (const std::uint32_t record : hatchesOf(drawing)) {
    if (function(database::Lens(drawing, record))) return;
  }
}

// What the drawing's hatches told of a pattern that one of them was given. Often thousands are given the same one, one after
// the other, and each would look at all of them.
struct Lesson {
  VkDbObjectId drawing = VkDbObjectId::kNull;
  // After the hatch was filled: any other edit may make it untrue.
  std::uint64_t revision = 0;
  // Of predefined patterns.
  std::optional<double> unit{};
  // The hatch that has the pattern of that name, which no table has.
  std::wstring name{};
  std::optional<std::uint32_t> hatch{};
};

Lesson& lessonOf(const database::Drawing& drawing) {
  thread_local Lesson lesson;
  if (lesson.drawing != idOf(drawing) || lesson.revision != drawing.revision())
    lesson = {.drawing = idOf(drawing), .revision = drawing.revision()};
  return lesson;
}

// How long an inch of a predefined pattern is in that hatch, at the scale 1. Drawings in millimetres have patterns for
// these or patterns in inches, whatever they say of themselves.
std::optional<double> unitIn(const database::Lens& hatch) {
  constexpr double tolerance = 0.01;
  if (isFilled(hatch) || kindOf(hatch) != predefined) return std::nullopt;
  const PredefinedPattern* const pattern = predefinedPattern(patternNameOf(hatch));
  const std::vector<double> x = hatch.reals(45, hatchSubclass);
  const std::vector<double> y = hatch.reals(46, hatchSubclass);
  if (pattern == nullptr || pattern->lines.empty() || x.empty() || y.empty()) return std::nullopt;
  const double size = length(Vector2{x.front(), y.front()});
  const double ratio = size / (length(pattern->lines.front().step) * hatch.real(41, hatchSubclass, 1));
  for (const double unit : {1.0, millimetresOfInch}) {
    if (std::abs(ratio - unit) <= tolerance * unit) return unit;
  }
  return std::nullopt;
}

double unitOfPatterns(const Subject& subject) {
  if (const auto unit = unitIn(subject.lens())) return *unit;
  Lesson& lesson = lessonOf(subject.drawing());
  if (lesson.unit) return *lesson.unit;
  std::optional<double> found;
  forEachHatch(subject.drawing(), [&](const database::Lens& hatch) {
    found = unitIn(hatch);
    return found.has_value();
  });
  const auto measurement = subject.drawing().document().headerValue("$MEASUREMENT", 70);
  const double ofHeader = dxf::parseInteger<int>(measurement.value_or("0")) == 1 ? millimetresOfInch : 1;
  lesson.unit = found.value_or(ofHeader);
  return *lesson.unit;
}

// What a hatch stores of a pattern.
struct Filling {
  std::wstring name{};
  std::int64_t kind = predefined;
  Placing placing{};
  std::vector<PatternLine> lines{};
  // Of plain lines.
  bool isCrossed = false;
};

// What the hatch has now, and another pattern keeps.
Placing keptPlacing(const database::Lens& hatch) {
  Placing kept = placingOf(hatch);
  if (isFilled(hatch) || kindOf(hatch) == plainLines) kept.scale = 1;
  return kept;
}

std::optional<Filling> predefinedFilling(const Subject& subject, std::wstring_view name) {
  const PredefinedPattern* const pattern = predefinedPattern(name);
  if (pattern == nullptr) return std::nullopt;
  Filling filling{.name = pattern->name, .placing = keptPlacing(subject.lens())};
  const Placing ofTable{.scale = 1 / unitOfPatterns(subject)};
  filling.lines = moved(asStored(pattern->lines), ofTable, filling.placing);
  return filling;
}

std::optional<std::uint32_t> hatchFilledWith(const database::Drawing& drawing, std::wstring_view name) {
  Lesson& lesson = lessonOf(drawing);
  if (lesson.hatch && database::sameName(lesson.name, name)) return lesson.hatch;
  for (const std::uint32_t record : hatchesOf(drawing)) {
    const database::Lens hatch(drawing, record);
    if (isFilled(hatch) || !database::sameName(patternNameOf(hatch), name) || !hatch.has(53, hatchSubclass))
      continue;
    lesson.name = name;
    lesson.hatch = record;
    return record;
  }
  return std::nullopt;
}

std::optional<Filling> fillingOfAnother(const Subject& subject, std::wstring_view name) {
  const std::optional<std::uint32_t> record = hatchFilledWith(subject.drawing(), name);
  if (!record) return std::nullopt;
  const database::Lens hatch(subject.drawing(), *record);
  const Placing placing = placingOf(hatch);
  Filling filling{
      .name = patternNameOf(hatch), .kind = kindOf(hatch), .placing = keptPlacing(subject.lens())};
  // The scale of plain lines is their distance.
  if (filling.kind == plainLines) filling.placing.scale = placing.scale;
  filling.lines = moved(storedLines(hatch), placing, filling.placing);
  filling.isCrossed = filling.kind == plainLines && hatch.integer(77, hatchSubclass, 0) == 1;
  return filling;
}

bool belongsToPattern(int code) {
  constexpr int codes[] = {52, 41, 77, 78, 53, 43, 44, 45, 46, 79, 49};
  return std::find(std::begin(codes), std::end(codes), code) != std::end(codes);
}

// Written only for what fills an area without lines.
bool belongsToGradient(int code) {
  return (code >= 450 && code <= 470) || code == 63 || code == 421;
}

void write(const Subject& subject, const Filling& filling) {
  const bool hasLines = !filling.lines.empty();
  Editor editor(subject);
  editor.text(2, hatchSubclass, filling.name);
  editor.integer(70, hatchSubclass, hasLines ? 0 : 1, 0);
  editor.integer(76, hatchSubclass, filling.kind);
  using Pairs = std::vector<std::pair<int, std::string>>;
  Pairs pairs;
  const auto addReal = [&](int code, double value) {
    if (!std::isfinite(value))
      throw Refusal(DISP_E_OVERFLOW, L"The lines of the pattern would become too large.");
    pairs.emplace_back(code, dxf::formatReal(value));
  };
  const auto addCount = [&](int code, std::size_t count) { pairs.emplace_back(code, std::to_string(count)); };
  if (hasLines) {
    addReal(52, subject.lens().real(52, hatchSubclass, 0));
    addReal(41, filling.placing.scale);
    addCount(77, filling.isCrossed ? 1 : 0);
    addCount(78, filling.lines.size());
  }
  for (const PatternLine& line : filling.lines) {
    addReal(53, line.angle);
    addReal(43, line.base.x);
    addReal(44, line.base.y);
    addReal(45, line.step.x);
    addReal(46, line.step.y);
    addCount(79, line.dashes.size());
    for (const double dash : line.dashes)
      addReal(49, dash);
  }
  subject.drawing().edit(subject.record(), [&](dxf::Document& document) {
    std::vector<std::size_t> gone;
    document.view(subject.record()).visit(hatchSubclass, [&](std::size_t index) {
      const int code = document.view(subject.record()).code(index);
      if (belongsToPattern(code) || (hasLines && belongsToGradient(code))) gone.push_back(index);
      return true;
    });
    for (auto index = gone.rbegin(); index != gone.rend(); ++index)
      document.erase(subject.record(), *index);
    std::size_t place = *document.view(subject.record()).find(76, hatchSubclass);
    for (const auto& [code, value] : pairs)
      document.insert(subject.record(), ++place, code, value);
  });
}

std::vector<std::wstring> namesIn(const database::Drawing& drawing) {
  std::vector<std::wstring> names;
  std::set<std::wstring> known;
  const auto add = [&](std::wstring name) {
    if (known.insert(database::foldName(name)).second) names.push_back(std::move(name));
  };
  for (const PredefinedPattern& pattern : predefinedPatterns())
    add(pattern.name);
  forEachHatch(drawing, [&](const database::Lens& hatch) {
    std::wstring name = patternNameOf(hatch);
    if (!name.empty() && !isFilled(hatch) && hatch.has(53, hatchSubclass)) add(std::move(name));
    return false;
  });
  return names;
}

}  // namespace

Vector3 patternOrigin(const database::Lens& hatch) {
  constexpr int pointCode = 1010;
  Vector3 origin;
  const std::optional<dxf::PairRange> range = hatch.xdata("ACAD");
  if (!range) return origin;
  for (std::size_t index = range->first; index < range->first + range->count; ++index) {
    const double number = dxf::parseReal(hatch.view().value(index)).value_or(0);
    if (hatch.view().code(index) == pointCode) origin.x = number;
    if (hatch.view().code(index) == pointCode + 10) origin.y = number;
  }
  return origin;
}

const std::vector<std::wstring>& patternNames(const Subject& subject) {
  // A palette asks for each choice by itself, and drawings are large.
  thread_local database::LastAsked<std::vector<std::wstring>> last;
  const database::Drawing& drawing = subject.drawing();
  return last.of(idOf(drawing), drawing, [&] { return namesIn(drawing); });
}

void fillWithPattern(const Subject& subject, std::wstring_view name) {
  const database::Lens lens = subject.lens();
  if (!lens.has(2, hatchSubclass) || !lens.has(76, hatchSubclass))
    throw Refusal(E_FAIL, L"The hatch lacks the part of its data that tells its pattern.");
  std::optional<Filling> filling = predefinedFilling(subject, name);
  const bool isPredefined = filling.has_value();
  if (!filling) filling = fillingOfAnother(subject, name);
  if (!filling)
    throw Refusal(E_INVALIDARG, L"There is no pattern of that name, and no hatch of the drawing has it.");
  const Lesson learnt = lessonOf(subject.drawing());
  write(subject, *filling);
  // The hatch now tells the same as those that were asked; what it told before is gone.
  Lesson& lesson = lessonOf(subject.drawing());
  if (isPredefined) {
    if (!filling->lines.empty()) lesson.unit = learnt.unit;
  } else {
    lesson.name = learnt.name;
    lesson.hatch = learnt.hatch;
  }
}

void crossPlainLines(const Subject& subject, bool crossed) {
  const database::Lens lens = subject.lens();
  Filling filling{.name = lens.name(2, hatchSubclass),
                  .kind = plainLines,
                  .placing = placingOf(lens),
                  .lines = storedLines(lens),
                  .isCrossed = crossed};
  if (filling.lines.size() != (crossed ? 1U : 2U))
    throw Refusal(E_FAIL, L"The stored lines of the pattern are damaged.");
  if (crossed) {
    const Placing across{.origin = filling.lines.front().base, .angle = std::numbers::pi / 2};
    const Placing along{.origin = across.origin};
    filling.lines.push_back(moved({filling.lines.front()}, along, across).front());
  } else {
    filling.lines.pop_back();
  }
  write(subject, filling);
}

void changePatternLines(const Subject& hatch, const Vector2& origin, double angle, double factor) {
  hatch.drawing().edit(hatch.record(), [&](dxf::Document& document) {
    Numbers numbers(document, hatch.record());
    for (const Family& family : familiesOf(document.view(hatch.record())))
      change(numbers, family, origin, angle, factor);
  });
}

}  // namespace velt::automation
