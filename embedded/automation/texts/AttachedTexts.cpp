#include "embedded/automation/texts/AttachedTexts.h"

#include <cmath>

#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/geometry/EntityGeometry.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Followers.h"
#include "embedded/automation/model/Refusal.h"

namespace velt::automation {
namespace {

constexpr const char* textSubclass = "AcDbText";
constexpr const char* attribute = "AcDbAttribute";

// Of a text that is justified left the second point has no meaning.
bool hangsOnSecondPoint(const database::Lens& lens) {
  return lens.has(11, textSubclass)
         && (lens.integer(72, textSubclass, 0) != 0 || lens.integer(74, attribute, 0) != 0);
}

template <class Move>
void movePoints(Editor& editor, Move&& move) {
  editor.point(10, textSubclass, move(pointAt(editor.lens(), 10, textSubclass)));
  if (hangsOnSecondPoint(editor.lens()))
    editor.point(11, textSubclass, move(pointAt(editor.lens(), 11, textSubclass)));
}

template <class Change>
void changeEach(const Subject& reference, Change&& change) {
  const database::RecordRange members = reference.drawing().members(reference.record());
  for (std::uint32_t record = members.first; record < members.first + members.count; ++record) {
    Editor editor(reference.drawing(), record);
    if (editor.lens().type() != "ATTRIB") {
      throw Refusal(E_FAIL, L"An entity that belongs to the block reference is not an attribute, and cannot follow it.");
    }
    requireFreeShape(reference.drawing(), record);
    change(editor);
  }
}

}  // namespace

bool hasAttachedTexts(const Subject& reference) {
  return reference.drawing().members(reference.record()).count > 0;
}

void moveAttachedTexts(const Subject& reference, const Vector3& by) {
  changeEach(reference, [&](Editor& editor) {
    const Vector3 inPlane = frameOf(editor.lens(), dxf::anySubclass).toObject(by);
    movePoints(editor, [&](const Vector3& point) { return point + inPlane; });
  });
}

void turnAttachedTexts(const Subject& reference, const Vector3& about, double angle) {
  const Vector3 normal = frameOf(reference.lens(), dxf::anySubclass).normal();
  const double cosine = std::cos(angle);
  const double sine = std::sin(angle);
  changeEach(reference, [&](Editor& editor) {
    constexpr double slack = 1e-9;
    if (length(frameOf(editor.lens(), dxf::anySubclass).normal() - normal) > slack) {
      throw Refusal(E_FAIL,
                    L"An attribute of the block reference cannot follow it: it lies in another plane.");
    }
    movePoints(editor, [&](const Vector3& point) {
      const Vector3 arm = point - about;
      return about + Vector3{arm.x * cosine - arm.y * sine, arm.x * sine + arm.y * cosine, arm.z};
    });
    const double before = radians(editor.lens().real(50, textSubclass, 0));
    editor.real(50, textSubclass, storedDegreesOf(normalizedAngle(before + angle)));
  });
}

}  // namespace velt::automation
