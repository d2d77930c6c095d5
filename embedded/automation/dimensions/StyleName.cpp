#include "embedded/automation/dimensions/StyleName.h"

#include <cstdint>
#include <string_view>

#include "embedded/automation/dimensions/DimensionStyle.h"
#include "embedded/automation/dimensions/Measurement.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/NameFolding.h"

namespace velt::automation {
namespace {

// What the place of a leader's text depends on.
struct TextPlace {
  double gap;
  std::int64_t position;

  friend bool operator==(const TextPlace&, const TextPlace&) = default;
};

TextPlace textPlaceOf(const Subject& subject) {
  const DimensionStyle style(subject);
  return {style.real(variables::textGap) * style.real(variables::overallScale),
          style.integer(variables::verticalPosition)};
}

const char* subclassOfStyle(const Subject& subject) {
  const std::string_view type = subject.lens().type();
  return type == "LEADER" ? "AcDbLeader" : type == "TOLERANCE" ? "AcDbFcf" : "AcDbDimension";
}

}  // namespace

std::wstring getDimStyle(const Subject& subject) {
  return DimensionStyle(subject).name();
}

void putDimStyle(const Subject& subject, const std::wstring& name) {
  constexpr int code = 3;
  const database::TableEntry* const style = subject.drawing().dimStyles().find(name);
  if (style == nullptr) throw Refusal(E_INVALIDARG, L"The drawing has no dimension style of that name.");
  if (database::sameName(getDimStyle(subject), name)) return;
  const TextPlace before = textPlaceOf(subject);
  keepingMeasurement(subject, [&] { Editor(subject).name(code, subclassOfStyle(subject), *style); });
  if (leaderLeadsToText(subject) && textPlaceOf(subject) != before) {
    throw Refusal(reasons::leaderTextWouldMove);
  }
}

bool leaderLeadsToText(const Subject& subject) {
  constexpr std::int64_t nothing = 3;
  const database::Lens lens = subject.lens();
  return lens.type() == "LEADER" && lens.integer(73, "AcDbLeader", nothing) != nothing;
}

}  // namespace velt::automation
