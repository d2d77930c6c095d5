#include "embedded/automation/hatches/HatchPattern.h"

#include <cmath>
#include <optional>
#include <vector>

#include "dxf/Numbers.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/model/Refusal.h"

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

}  // namespace

void changePatternLines(const Subject& hatch, const Vector2& origin, double angle, double factor) {
  hatch.drawing().edit(hatch.record(), [&](dxf::Document& document) {
    Numbers numbers(document, hatch.record());
    for (const Family& family : familiesOf(document.view(hatch.record())))
      change(numbers, family, origin, angle, factor);
  });
}

}  // namespace velt::automation
