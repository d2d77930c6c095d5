#include "palette/text/ObjectText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <optional>

#include "holders/InterfaceHolder.h"
#include "holders/StringHolder.h"
#include "host/automation/ColorNames.h"
#include "host/automation/IVeltHyperlinks.h"
#include "host/automation/IVeltVkCmColor.h"
#include "palette/Palette.h"

namespace velt::palette {

namespace {

using holders::handedOver;
using holders::InterfaceHolder;
using holders::StringHolder;

// How the color is meant: the top byte of its value (see VkCmColor).
enum ColorMethod : std::uint32_t {
  byLayer = 0xC0,
  byBlock = 0xC1,
  trueColor = 0xC2,
  colorIndex = 0xC3,
  noColor = 0xC8
};

std::string colorIndexText(std::int32_t index) {
  const auto& names = automation::colorNames;
  const auto named = std::find_if(names.begin(), names.end(),
                                  [&](const automation::NamedColor& color) { return color.index == index; });
  return named != names.end() ? toUtf8(named->name) : fmt::format("{}", index);
}

std::string colorText(std::uint32_t value) {
  switch (value >> 24) {
    case byLayer:
      return colorIndexText(automation::byLayerIndex);
    case byBlock:
      return colorIndexText(automation::byBlockIndex);
    case noColor:
      return "None";
    case trueColor:
      return fmt::format("{},{},{}", (value >> 16) & 0xFF, (value >> 8) & 0xFF, value & 0xFF);
    case colorIndex:
      return colorIndexText(static_cast<std::int32_t>(value & 0xFFFF));
    default:
      return fmt::format("color {:08X}", value);
  }
}

// Empty when the call fails.
template <class Object>
std::wstring textFrom(Object& object, HRESULT (Object::*get)(BSTR*)) {
  StringHolder text;
  if (!handedOver((object.*get)(text.put()), text) || !text) return {};
  return text.get();
}

std::optional<std::string> colorTextOf(IDispatch* object) {
  InterfaceHolder<IVeltVkCmColor> color;
  if (FAILED(holders::query(object, IID_IVeltVkCmColor, color))) return std::nullopt;
  LONG value = 0;
  color->get_EntityColor(&value);
  const std::wstring name = textFrom(*color.get(), &IVeltVkCmColor::get_ColorName);
  const std::wstring book = textFrom(*color.get(), &IVeltVkCmColor::get_BookName);
  if (name.empty()) return colorText(static_cast<std::uint32_t>(value));
  return oneLine(book.empty() ? name : book + L"$" + name);
}

std::optional<std::string> hyperlinksTextOf(IDispatch* object) {
  InterfaceHolder<IVeltHyperlinks> hyperlinks;
  if (FAILED(holders::query(object, IID_IVeltHyperlinks, hyperlinks))) return std::nullopt;
  LONG count = 0;
  hyperlinks->get_Count(&count);
  std::string text;
  for (LONG index = 0; index < count; ++index) {
    InterfaceHolder<IVeltHyperlink> hyperlink;
    if (!handedOver(hyperlinks->Item(index, hyperlink.put()), hyperlink) || !hyperlink) continue;
    if (!text.empty()) text += ", ";
    text += oneLine(textFrom(*hyperlink.get(), &IVeltHyperlink::get_URL));
  }
  return text;
}

}  // namespace

std::string objectText(IDispatch* object) {
  if (object == nullptr) return "";
  if (const std::optional<std::string> color = colorTextOf(object)) return *color;
  if (const std::optional<std::string> hyperlinks = hyperlinksTextOf(object)) return *hyperlinks;
  return "(object)";
}

}  // namespace velt::palette
