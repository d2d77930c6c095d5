#include "embedded/automation/entities/General.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dxf/Numbers.h"
#include "embedded/automation/model/Access.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/automation/objects/ColorObject.h"
#include "embedded/automation/objects/ColorValue.h"
#include "embedded/automation/objects/HyperlinksObject.h"
#include "embedded/database/Colors.h"
#include "embedded/database/NameFolding.h"
#include "embedded/database/NamedObjects.h"

namespace velt::automation {
namespace {

using platform::Category;

constexpr const char* common = "AcDbEntity";

// How many records after the entity's own are pieces of it.
std::uint32_t countPieces(const Subject& subject) {
  if (subject.lens().type() != "POLYLINE") return 0;
  const database::RecordRange members = subject.drawing().members(subject.record());
  const std::uint32_t next = members.first + members.count;
  const auto& records = subject.drawing().document().records();
  const bool isEnded = next < records.size() && records[next].sequenceHead == subject.record();
  return next - (subject.record() + 1) + (isEnded ? 1 : 0);
}

// Changes each record that says of itself what it has in common with all entities. A polyline in pieces says it in each
// piece, and readers believe the first that they come to; the attributes of a block reference are entities of their own.
template <class Change>
void changeParts(const Subject& subject, Change&& change) {
  const std::uint32_t last = subject.record() + countPieces(subject);
  for (std::uint32_t part = subject.record(); part <= last; ++part)
    change(Editor(subject.drawing(), part), part);
}

const database::TableEntry& requireEntry(const database::Table& table, const std::wstring& name,
                                         const wchar_t* refusal) {
  const database::TableEntry* const entry = table.find(name);
  if (entry == nullptr) throw Refusal(E_INVALIDARG, refusal);
  return *entry;
}

OwnedDispatch getColor(const Subject& subject) {
  return ColorObject::make(subject.entity().color());
}

void putColor(const Subject& subject, const Value& value) {
  const VkCmColor color = colorFrom(value);
  if (color == subject.entity().color()) return;
  const bool isTrueColor = color.color() == database::colorOfRgb(color.color());
  if ((isTrueColor || *color.colorName() != L'\0') && !isOfFormat(subject.drawing(), "AC1018")) {
    throw Refusal(
        E_FAIL,
        L"This version of DXF has colors by their number only (1 to 255); DXF 2004 and later have others.");
  }
  changeParts(subject, [&](const Editor&, std::uint32_t part) {
    if (!database::setEntityColor(subject.drawing(), part, color)) {
      throw Refusal(E_FAIL, L"The entity lacks the part of its data that the color belongs in.");
    }
  });
}

bool isSameColor(const Value& put, const Value& got) {
  return colorFrom(put) == colorFrom(got);
}

std::wstring getLayer(const Subject& subject) {
  return subject.entity().layerName();
}

void putLayer(const Subject& subject, const std::wstring& name) {
  constexpr int code = 8;
  const auto& layer =
      requireEntry(subject.drawing().layers(), name, L"The drawing has no layer of that name.");
  changeParts(subject, [&](Editor editor, std::uint32_t) {
    // Where it is read: after another marker, when the usual place has none.
    const bool isElsewhere = !editor.lens().has(code, common) && editor.lens().has(code, dxf::anySubclass);
    editor.name(code, isElsewhere ? dxf::anySubclass.data() : common, layer);
  });
}

std::wstring getLinetype(const Subject& subject) {
  return subject.entity().linetypeName();
}

void putLinetype(const Subject& subject, const std::wstring& name) {
  const auto& linetype =
      requireEntry(subject.drawing().linetypes(), name, L"The drawing has no line type of that name.");
  changeParts(subject, [&](Editor editor, std::uint32_t) { editor.name(6, common, linetype); });
}

void putLinetypeScale(const Subject& subject, const double& scale) {
  changeParts(subject, [&](Editor editor, std::uint32_t) {
    if (editor.lens().real(48, common, 1) != scale) editor.real(48, common, scale);
  });
}

std::int32_t getLineweight(const Subject& subject) {
  const std::int64_t stored = subject.entity().lineweight();
  if (!std::in_range<std::int32_t>(stored))
    throw Refusal(DISP_E_OVERFLOW, L"The drawing holds a number that is too large.");
  return static_cast<std::int32_t>(stored);
}

void putLineweight(const Subject& subject, const std::int32_t& weight) {
  constexpr std::int64_t byLayer = -1;
  changeParts(subject, [&](Editor editor, std::uint32_t) { editor.integer(370, common, weight, byLayer); });
}

std::wstring getPlotStyleName(const Subject& subject) {
  const database::Drawing& drawing = subject.drawing();
  // In most drawings the color decides how an entity is plotted, and names of plot styles mean nothing.
  const std::optional<std::string_view> mode = drawing.document().headerValue("$PSTYLEMODE", 290);
  if (!mode || dxf::parseInteger<int>(*mode).value_or(1) != 0) return L"ByColor";
  const database::Lens lens = subject.lens();
  const std::uint64_t style = lens.handle(390, common);
  switch (lens.integer(380, common, style == 0 ? 0 : 3)) {
    case 0:
      return L"ByLayer";
    case 1:
      return L"ByBlock";
    case 2:
      return L"Normal";
    default:
      break;
  }
  // The style is a place holder without a name of its own.
  return drawing.recordByHandle(style) ? database::objectName(drawing, style) : L"ByLayer";
}

constexpr std::int64_t byBlockTransparency = 0x01000000;
constexpr std::int64_t byAlpha = 0x02000000;

std::wstring getTransparency(const Subject& subject) {
  const std::int64_t stored = subject.lens().integer(440, common, 0);
  if (stored == byBlockTransparency) return L"ByBlock";
  if ((stored & byAlpha) == 0) return L"ByLayer";
  const auto opacity = static_cast<double>(stored & 0xFF);
  return std::to_wstring(static_cast<int>(std::lround((255 - opacity) / 255 * 100)));
}

// From 0 to 90, in digits, with a percent sign or without.
int percentFrom(std::wstring_view text) {
  constexpr int highest = 90;
  const auto isDigit = [](wchar_t character) { return character >= L'0' && character <= L'9'; };
  if (text.ends_with(L'%')) text.remove_suffix(1);
  while (text.ends_with(L' '))
    text.remove_suffix(1);
  int percent = highest + 1;
  if (!text.empty() && text.size() <= 2 && std::all_of(text.begin(), text.end(), isDigit)) {
    percent = 0;
    for (const wchar_t digit : text)
      percent = percent * 10 + static_cast<int>(digit - L'0');
  }
  if (percent > highest)
    throw Refusal(E_INVALIDARG,
                  L"A transparency is ByLayer, ByBlock, or a whole number of percent from 0 to 90.");
  return percent;
}

constexpr std::int64_t byLayerTransparency = 0;

// As the drawing stores it.
std::int64_t transparencyFrom(const std::wstring& text) {
  if (database::sameName(text, L"ByBlock")) return byBlockTransparency;
  if (database::sameName(text, L"ByLayer")) return byLayerTransparency;
  return byAlpha | 255 * (100 - percentFrom(text)) / 100;
}

bool isSameTransparency(const Value& put, const Value& got) {
  return transparencyFrom(valueAs<std::wstring>(put)) == transparencyFrom(valueAs<std::wstring>(got));
}

void putTransparency(const Subject& subject, const std::wstring& text) {
  const std::int64_t stored = transparencyFrom(text);
  if (database::sameName(getTransparency(subject), text)) return;
  changeParts(subject, [&](Editor editor, std::uint32_t) {
    if (stored == byLayerTransparency) {
      editor.remove(440, common);
    } else {
      editor.integer(440, common, stored);
    }
  });
}

bool getVisible(const Subject& subject) {
  return subject.lens().integer(60, common, 0) == 0;
}

void putVisible(const Subject& subject, const bool& visible) {
  changeParts(subject, [&](Editor editor, std::uint32_t) { editor.integer(60, common, visible ? 0 : 1, 0); });
}

OwnedDispatch getHyperlinks(const Subject& subject) {
  return HyperlinksObject::make(subject.id());
}

std::wstring getHandle(const Subject& subject) {
  const std::string digits = dxf::formatHandle(subject.drawing().handleOf(subject.record()));
  return std::wstring(digits.begin(), digits.end());
}

// What a class calls its entities; the generic classes tell what the drawing calls it.
std::wstring getEntityName(const Subject& subject) {
  if (!subject.kind().dxfName.empty()) return subject.kind().label;
  const std::string_view type = subject.lens().type();
  return std::wstring(type.begin(), type.end());
}

// clang-format off
constexpr PropertyRow handleRow = {1310, L"Handle",     L"Handle", VT_BSTR, Category::Misc, computed<getHandle>(),     readOnly(reasons::neverChanges), Choices::None, 910, L"What names the object within its drawing."};
constexpr PropertyRow nameRow =   {1311, L"EntityName", L"Name",   VT_BSTR, Category::Misc, computed<getEntityName>(), readOnly(reasons::neverChanges), Choices::None, 900, L"What kind of object it is."};

constexpr PropertyRow objectTable[] = {handleRow, nameRow};

constexpr PropertyRow entityTable[] = {
  // id   name                   label              type                     category           access                                                                            writability                                choices               weight help
  { 1280, L"Color",              L"Color",          VT_DISPATCH,             Category::General, computed<getColor, putColor>().comparedBy(isSameColor), writable,                                  Choices::Colors,       10,   L"Color of the entity; by layer when it is the layer's."},
  { 1281, L"Layer",              L"Layer",          VT_BSTR,                 Category::General, computed<getLayer, putLayer>(),                                                   writable,                                  Choices::Layers,       20,   L"Name of the layer that the entity is on."},
  { 1282, L"Linetype",           L"Linetype",       VT_BSTR,                 Category::General, computed<getLinetype, putLinetype>(),                                             writable,                                  Choices::Linetypes,    30,   L"Name of the line type that the entity is drawn with."},
  { 1283, L"LinetypeScale",      L"Linetype scale", VT_R8,                   Category::General, writtenBy<putLinetypeScale>(storedReal(48, common, 1)).positive().from("AC1012"), writable,                                  Choices::None,         40,   L"Scale of the line type, relative to the scale of the drawing."},
  { 1300, L"PlotStyleName",      L"Plot style",     VT_BSTR,                 Category::General, computed<getPlotStyleName>(),                                                     readOnly(reasons::stylesOutsideOfDrawing), Choices::None,         50,   L"How the entity is plotted."},
  { 1299, L"Lineweight",         L"Lineweight",     types::entityLineweight, Category::General, computed<getLineweight, putLineweight>().from("AC1015"),                          writable,                                  Choices::Enumeration,  60,   L"Width of the line on paper."},
  { 1312, L"EntityTransparency", L"Transparency",   VT_BSTR,                 Category::General, computed<getTransparency, putTransparency>().from("AC1018").comparedBy(isSameTransparency), writable,                                  Choices::None,         70,   L"ByLayer, ByBlock, or percent from 0 to 90."},
  { 1301, L"Hyperlinks",         L"Hyperlink",      VT_DISPATCH,             Category::General, computed<getHyperlinks>(),                                                        readOnly(reasons::madeElsewhere),          Choices::None,         80,   L"The links that the entity carries."},
  { 1313, L"Visible",            L"Visible",        VT_BOOL,                 Category::Misc,    computed<getVisible, putVisible>().from("AC1012"),                                writable,                                  Choices::None,        920,   L"Whether the entity is drawn at all."},
  handleRow,
  nameRow,
};
// clang-format on

}  // namespace

const std::span<const PropertyRow> objectRows = objectTable;
const std::span<const PropertyRow> entityRows = entityTable;

}  // namespace velt::automation
