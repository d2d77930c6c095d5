#include "view/TextStyles.h"

#include <algorithm>
#include <cstdint>
#include <cwctype>

#include "dxf/Numbers.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/database/Lens.h"
#include "embedded/database/NamedObjects.h"

namespace velt::view {
namespace {

using database::Drawing;
using database::Lens;

constexpr std::string_view subclass = "AcDbTextStyleTableRecord";

// "fonts\\Arial.ttf" is Arial. Files of strokes (.shx, or no ending at all) have no family.
std::wstring familyOfFile(std::wstring file) {
  const std::size_t folder = file.find_last_of(L"\\/");
  if (folder != std::wstring::npos) file.erase(0, folder + 1);
  const std::size_t dot = file.rfind(L'.');
  if (dot == std::wstring::npos) return {};
  std::wstring ending = file.substr(dot + 1);
  std::transform(ending.begin(), ending.end(), ending.begin(), [](wchar_t letter) {
    return static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(letter)));
  });
  return ending == L"ttf" || ending == L"otf" || ending == L"ttc" ? file.substr(0, dot) : std::wstring();
}

// Programs that choose fonts by family leave the name, and a number of flags, in extended data.
void readFamily(const Lens& record, TextStyle& style) {
  constexpr std::int64_t bold = 0x2000000;
  constexpr std::int64_t italic = 0x1000000;
  const auto data = record.xdata("ACAD");
  if (!data) return;
  for (std::size_t index = data->first; index < data->first + data->count; ++index) {
    const int code = record.view().code(index);
    if (code == 1000) style.family = record.drawing().decode(dxf::trimmed(record.view().value(index)));
    if (code == 1071) {
      const std::int64_t flags = dxf::parseInteger<std::int64_t>(record.view().value(index)).value_or(0);
      style.isBold = (flags & bold) != 0;
      style.isItalic = (flags & italic) != 0;
    }
  }
}

TextStyle styleOf(const Drawing& drawing, const database::TableEntry* entry) {
  TextStyle style;
  if (entry == nullptr || entry->isImplied()) return style;
  const Lens record(drawing, entry->record);
  const double factor = record.real(41, subclass, 1);
  if (factor > 0) style.widthFactor = factor;
  style.oblique = automation::radians(record.real(50, subclass, 0));
  style.family = familyOfFile(record.name(3, subclass));
  readFamily(record, style);
  return style;
}

}  // namespace

TextStyle textStyleNamed(const Drawing& drawing, std::wstring_view name) {
  return styleOf(drawing, drawing.textStyles().find(name));
}

TextStyle textStyleOfHandle(const Drawing& drawing, std::uint64_t handle) {
  return textStyleNamed(drawing, database::entryName(drawing, drawing.textStyles(), handle));
}

}  // namespace velt::view
