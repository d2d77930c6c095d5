#include "embedded/automation/objects/ColorObject.h"

#include "embedded/automation/model/Refusal.h"
#include "embedded/database/Colors.h"
#include "holders/StringHolder.h"
#include "host/automation/ColorNames.h"

namespace velt::automation {
namespace {

constexpr std::uint32_t byRgb = 0xC2000000;
constexpr std::uint32_t byIndex = 0xC3000000;
constexpr std::uint32_t noColor = 0xC8000000;

bool isColor(std::uint32_t value) {
  const std::uint32_t method = value & database::colorMethodMask;
  return (method >= database::colorByLayer && method <= byIndex) || method == noColor;
}

Value getEntityColor(ColorObject& object, std::int32_t) {
  return static_cast<std::int32_t>(object.color().color());
}

void putEntityColor(ColorObject& object, const Value& value) {
  const HRESULT result = object.put_EntityColor(std::get<std::int32_t>(value));
  if (FAILED(result)) throw Refusal(result, L"The value is not a color.");
}

Value getColorName(ColorObject& object, std::int32_t) {
  return std::wstring(object.color().colorName());
}
Value getBookName(ColorObject& object, std::int32_t) {
  return std::wstring(object.color().bookName());
}

Value getColorIndex(ColorObject& object, std::int32_t) {
  const std::uint32_t value = object.color().color();
  switch (value & database::colorMethodMask) {
    case database::colorByLayer:
      return byLayerIndex;
    case database::colorByBlock:
      return byBlockIndex;
    case byIndex:
      return static_cast<std::int32_t>(value & 0xFF);
    default:
      throw Refusal(E_FAIL, L"The color is none of the color index.");
  }
}

void putColorIndex(ColorObject& object, const Value& value) {
  const std::int32_t index = std::get<std::int32_t>(value);
  if (index < byBlockIndex || index > byLayerIndex) {
    throw Refusal(E_INVALIDARG, L"A color index lies between 0 and 256.");
  }
  std::uint32_t color = database::colorOfIndex(static_cast<std::uint32_t>(index));
  if (index == byLayerIndex) color = database::colorByLayer;
  if (index == byBlockIndex) color = database::colorByBlock;
  object.put_EntityColor(static_cast<LONG>(color));
}

template <int Shift>
Value getPart(ColorObject& object, std::int32_t) {
  const std::uint32_t value = object.color().color();
  if ((value & database::colorMethodMask) != byRgb)
    throw Refusal(E_FAIL, L"The color is not given as red, green and blue.");
  return static_cast<std::int32_t>((value >> Shift) & 0xFF);
}

HRESULT giveName(const wchar_t* name, BSTR* out) {
  if (out == nullptr) return E_POINTER;
  BSTR copy = SysAllocString(name);
  if (copy == nullptr) return E_OUTOFMEMORY;
  *out = copy;
  return S_OK;
}

}  // namespace

// clang-format off
const MemberRow<ColorObject> ColorObject::members[7] = {
  // id  name            help                                                              type     get             put             method
  {  1, L"EntityColor",  L"The color in one number: the way of coloring in the top byte.", VT_I4,   getEntityColor, putEntityColor, false},
  {  2, L"ColorName",    L"Name within the color book, empty for none.",                   VT_BSTR, getColorName,   nullptr,        false},
  {  3, L"BookName",     L"Name of the color book, empty for none.",                       VT_BSTR, getBookName,    nullptr,        false},
  {  4, L"ColorIndex",   L"0 by block, 1 to 255 the color index, 256 by layer.",           VT_I4,   getColorIndex,  putColorIndex,  false},
  {  5, L"Red",          L"Red part of a true color, 0 to 255.",                           VT_I4,   getPart<16>,    nullptr,        false},
  {  6, L"Green",        L"Green part of a true color, 0 to 255.",                         VT_I4,   getPart<8>,     nullptr,        false},
  {  7, L"Blue",         L"Blue part of a true color, 0 to 255.",                          VT_I4,   getPart<0>,     nullptr,        false},
};
// clang-format on

OwnedDispatch ColorObject::make(const VkCmColor& color) {
  OwnedDispatch made = OwnedDispatch::owning(com::makeObject<ColorObject>(color));
  if (!made) throw Refusal(E_OUTOFMEMORY, L"Memory is exhausted.");
  return made;
}

HRESULT ColorObject::put_EntityColor(LONG value) {
  const auto bits = static_cast<std::uint32_t>(value);
  if (!isColor(bits)) return E_INVALIDARG;
  color_.setColor(bits);
  return S_OK;
}

HRESULT ColorObject::get_EntityColor(LONG* value) {
  if (value == nullptr) return E_POINTER;
  *value = static_cast<LONG>(color_.color());
  return S_OK;
}

HRESULT ColorObject::get_ColorName(BSTR* name) {
  return giveName(color_.colorName(), name);
}

HRESULT ColorObject::get_BookName(BSTR* name) {
  return giveName(color_.bookName(), name);
}

HRESULT ColorObject::SetNames(BSTR colorName, BSTR bookName) {
  return guarded([&] {
    color_.setNames(colorName, bookName);
    return S_OK;
  });
}

VkCmColor colorOf(IUnknown& object) {
  holders::InterfaceHolder<IVeltVkCmColor> source;
  if (FAILED(holders::query(&object, IID_IVeltVkCmColor, source)))
    throw Refusal(E_NOINTERFACE, L"The value is not a color.");
  LONG value = 0;
  holders::StringHolder colorName;
  holders::StringHolder bookName;
  const auto require = [](HRESULT result, auto&... outputs) {
    if (!holders::handedOver(result, outputs...)) throw Refusal(result, L"The color cannot be read.");
  };
  require(source->get_EntityColor(&value));
  require(source->get_ColorName(colorName.put()), colorName);
  require(source->get_BookName(bookName.put()), bookName);
  VkCmColor color;
  color.setColor(static_cast<std::uint32_t>(value));
  color.setNames(colorName.get(), bookName.get());
  return color;
}

}  // namespace velt::automation
