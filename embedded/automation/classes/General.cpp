#include "embedded/automation/classes/General.h"

#include <cmath>
#include <string>

#include "embedded/automation/Access.h"
#include "embedded/automation/ColorObject.h"
#include "embedded/automation/EntityGeometry.h"
#include "embedded/automation/HyperlinksObject.h"
#include "embedded/dxf/Numbers.h"

namespace velt::automation {
namespace {

using palette::Category;

constexpr const char* common = "AcDbEntity";

OwnedDispatch getColor(const Subject& subject) {
  return ColorObject::make(subject.entity().color());
}

std::wstring getLayer(const Subject& subject) {
  return subject.entity().layerName();
}

std::wstring getLinetype(const Subject& subject) {
  return subject.entity().linetypeName();
}

std::int32_t getLineweight(const Subject& subject) {
  return static_cast<std::int32_t>(subject.entity().lineweight());
}

/// What a dictionary calls the object that it holds under this handle; empty when it does not hold it.
std::wstring nameInDictionary(const database::Drawing& drawing, std::uint32_t dictionary,
                              std::uint64_t handle) {
  constexpr int nameCode = 3;
  constexpr int entryCode = 350;
  const database::Lens lens(drawing, dictionary);
  std::string_view name;
  std::wstring found;
  lens.view().visit(dxf::anySubclass, [&](std::size_t index) {
    if (lens.view().code(index) == nameCode) name = lens.view().value(index);
    if (lens.view().code(index) != entryCode) return true;
    if (dxf::parseHandle(lens.view().value(index)) != handle) return true;
    found = drawing.decode(dxf::trimmed(name));
    return false;
  });
  return found;
}

std::wstring getPlotStyleName(const Subject& subject) {
  const database::Drawing& drawing = subject.drawing();
  // In most drawings the colour decides how an entity is plotted, and names of plot styles mean nothing.
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
  // The style is a place holder without a name; the dictionary that owns it knows the name.
  const std::optional<std::uint32_t> placeHolder = drawing.recordByHandle(style);
  if (!placeHolder) return L"ByLayer";
  const std::uint64_t owner = database::Lens(drawing, *placeHolder).handle(330, dxf::anySubclass);
  const std::optional<std::uint32_t> dictionary = drawing.recordByHandle(owner);
  return dictionary ? nameInDictionary(drawing, *dictionary, style) : std::wstring();
}

std::wstring getTransparency(const Subject& subject) {
  constexpr std::int64_t byBlock = 0x01000000;
  constexpr std::int64_t byAlpha = 0x02000000;
  const std::int64_t stored = subject.lens().integer(440, common, 0);
  if (stored == byBlock) return L"ByBlock";
  if ((stored & byAlpha) == 0) return L"ByLayer";
  const auto opacity = static_cast<double>(stored & 0xFF);
  return std::to_wstring(static_cast<int>(std::lround((255 - opacity) / 255 * 100)));
}

bool getVisible(const Subject& subject) {
  return subject.lens().integer(60, common, 0) == 0;
}

OwnedDispatch getHyperlinks(const Subject& subject) {
  return HyperlinksObject::make(subject.id());
}

std::wstring getHandle(const Subject& subject) {
  const std::string digits = dxf::formatHandle(subject.drawing().handleOf(subject.record()));
  return std::wstring(digits.begin(), digits.end());
}

/// What a class calls its entities; the generic classes tell what the drawing calls it.
std::wstring getEntityName(const Subject& subject) {
  if (!subject.kind().dxfName.empty()) return subject.kind().label;
  const std::string_view type = subject.lens().type();
  return std::wstring(type.begin(), type.end());
}

// clang-format off
constexpr PropertyRow handleRow = {1310, L"Handle",     L"Handle", VT_BSTR, Category::Misc, computed<getHandle>(),     Choices::None, 910, L"What names the object within its drawing. Read-only: it never changes."};
constexpr PropertyRow nameRow =   {1311, L"EntityName", L"Name",   VT_BSTR, Category::Misc, computed<getEntityName>(), Choices::None, 900, L"What kind of object it is. Read-only: it never changes."};

constexpr PropertyRow objectTable[] = {handleRow, nameRow};

constexpr PropertyRow entityTable[] = {
  // id  name                   label             type                  category           access                         choices              weight  help
  {1280, L"Color",              L"Color",         VT_DISPATCH,          Category::General, computed<getColor>(),          Choices::Colors,      10, L"Colour of the entity; by layer when it is the layer's."},
  {1281, L"Layer",              L"Layer",         types::layerName,     Category::General, computed<getLayer>(),          Choices::Layers,      20, L"Name of the layer that the entity is on."},
  {1282, L"Linetype",           L"Linetype",      types::linetypeName,  Category::General, computed<getLinetype>(),       Choices::Linetypes,   30, L"Name of the line type that the entity is drawn with."},
  {1283, L"LinetypeScale",      L"Linetype scale", types::noUnits,      Category::General, storedReal(48, common, 1),     Choices::None,        40, L"Scale of the line type, relative to the scale of the drawing."},
  {1300, L"PlotStyleName",      L"Plot style",    types::plotStyleName, Category::General, computed<getPlotStyleName>(),  Choices::None,        50, L"How the entity is plotted. Read-only: the styles stand outside of the drawing."},
  {1299, L"Lineweight",         L"Lineweight",    types::lineweight,    Category::General, computed<getLineweight>(),     Choices::Enumeration, 60, L"Width of the line on paper."},
  {1312, L"EntityTransparency", L"Transparency",  VT_BSTR,              Category::General, computed<getTransparency>(),   Choices::None,        70, L"ByLayer, ByBlock, or percent from 0 to 90."},
  {1301, L"Hyperlinks",         L"Hyperlink",     VT_DISPATCH,          Category::General, computed<getHyperlinks>(),     Choices::None,        80, L"The links that the entity carries. Read-only: they are read here and made elsewhere."},
  {1313, L"Visible",            L"Visible",       VT_BOOL,              Category::Misc,    computed<getVisible>(),        Choices::None,       920, L"Whether the entity is drawn at all."},
  handleRow,
  nameRow,
};
// clang-format on

}  // namespace

const std::span<const PropertyRow> objectRows = objectTable;
const std::span<const PropertyRow> entityRows = entityTable;

Vector3 getNormal(const Subject& subject) {
  return direction(normalOf(subject.lens(), dxf::anySubclass), {0, 0, 1});
}

}  // namespace velt::automation
