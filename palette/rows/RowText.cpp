#include "palette/rows/RowText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <string_view>

#include "embedded/database/Entity.h"
#include "host/automation/ColorNames.h"
#include "host/automation/IVeltBaseObject.h"
#include "host/automation/IVeltHyperlinks.h"
#include "host/automation/IVeltVkCmColor.h"
#include "host/automation/IdValues.h"
#include "palette/rows/NumberKinds.h"
#include "palette/text/Utf8.h"

namespace velt::tool {

namespace {

// One reference, released at the end of its scope.
template <class Interface>
class Reference {
 public:
  Reference(IUnknown* object, REFIID iid) {
    if (object != nullptr) object->QueryInterface(iid, reinterpret_cast<void**>(&pointer_));
  }
  Reference() = default;
  Reference(const Reference&) = delete;
  Reference& operator=(const Reference&) = delete;
  ~Reference() {
    if (pointer_ != nullptr) pointer_->Release();
  }
  Interface** put() { return &pointer_; }
  Interface* operator->() const { return pointer_; }
  explicit operator bool() const { return pointer_ != nullptr; }

 private:
  Interface* pointer_ = nullptr;
};

std::wstring taken(BSTR string) {
  const std::wstring text = string != nullptr ? string : L"";
  SysFreeString(string);
  return text;
}

// --- numbers ---------------------------------------------------------------------------------------------

std::string fixed(double number, int places) {
  std::string text = fmt::format("{:.{}f}", number, places);
  const bool isZero = text.find_first_of("123456789") == std::string::npos;
  return isZero && text.starts_with('-') ? text.substr(1) : text;
}

std::string realText(const PROPINFO& row, double number, const NumberStyle& style) {
  if (!std::isfinite(number)) return fmt::format("{}", number);
  constexpr double tooLongForFixed = 1e15;
  if (std::fabs(number) >= tooLongForFixed) return fmt::format("{:g}", number);
  if (isAngle(row.customType)) return fixed(number * 180.0 / std::numbers::pi, style.anglePlaces) + "\u00B0";
  if (isWithoutUnits(row.customType))
    return fmt::format("{:.{}g}", number, std::max(style.lengthPlaces + 1, 6));
  return fixed(number, style.lengthPlaces);
}

// --- colors and hyperlinks ------------------------------------------------------------------------------

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
                                  [&](const automation::NamedColor& c) { return c.index == index; });
  return named != names.end() ? toUtf8(named->name) : fmt::format("{}", index);
}

std::string colorText(std::uint32_t value, const std::wstring& name, const std::wstring& book) {
  if (!name.empty()) return toUtf8(book.empty() ? name : book + L"$" + name);
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
      return fmt::format("colour {:08X}", value);
  }
}

std::optional<std::string> colorTextOf(IDispatch* object) {
  const Reference<IVeltVkCmColor> color(object, IID_IVeltVkCmColor);
  if (!color) return std::nullopt;
  LONG value = 0;
  BSTR name = nullptr;
  BSTR book = nullptr;
  color->get_EntityColor(&value);
  color->get_ColorName(&name);
  color->get_BookName(&book);
  const std::wstring colorName = taken(name);
  const std::wstring bookName = taken(book);
  return colorText(static_cast<std::uint32_t>(value), colorName, bookName);
}

std::optional<std::string> hyperlinksTextOf(IDispatch* object) {
  const Reference<IVeltHyperlinks> hyperlinks(object, IID_IVeltHyperlinks);
  if (!hyperlinks) return std::nullopt;
  LONG count = 0;
  hyperlinks->get_Count(&count);
  std::string text;
  for (LONG index = 0; index < count; ++index) {
    Reference<IVeltHyperlink> hyperlink;
    if (FAILED(hyperlinks->Item(index, hyperlink.put())) || !hyperlink) continue;
    BSTR url = nullptr;
    hyperlink->get_URL(&url);
    if (!text.empty()) text += ", ";
    text += oneLine(taken(url));
  }
  return text;
}

std::string objectText(IDispatch* object) {
  if (const std::optional<std::string> color = colorTextOf(object)) return *color;
  if (const std::optional<std::string> hyperlinks = hyperlinksTextOf(object)) return *hyperlinks;
  return object != nullptr ? "(object)" : "";
}

// --- values ----------------------------------------------------------------------------------------------

std::optional<long long> integerIn(const VARIANT& value) {
  switch (value.vt) {
    case VT_I1:
      return value.cVal;
    case VT_UI1:
      return value.bVal;
    case VT_I2:
      return value.iVal;
    case VT_UI2:
      return value.uiVal;
    case VT_I4:
    case VT_INT:
      return value.lVal;
    case VT_UI4:
    case VT_UINT:
      return value.ulVal;
    case VT_I8:
      return value.llVal;
    default:
      return std::nullopt;
  }
}

std::optional<std::string> choiceLabel(const PROPINFO& row, long long value) {
  for (std::uint32_t i = 0; i < row.choiceValues.length() && i < row.choiceNames.length(); ++i) {
    if (row.choiceValues[i] == value) return oneLine(row.choiceNames[i].str());
  }
  return std::nullopt;
}

// Also of a varying row, whose value is the first entity's.
std::string ownValueText(const PROPINFO& row, const NumberStyle& style) {
  const VARIANT& value = row.value;
  if (const std::optional<long long> integer = integerIn(value)) {
    return choiceLabel(row, *integer).value_or(fmt::format("{}", *integer));
  }
  switch (value.vt) {
    case VT_UI8:
      return fmt::format("{}", value.ullVal);
    case VT_R4:
      return realText(row, static_cast<double>(value.fltVal), style);
    case VT_R8:
      return realText(row, value.dblVal, style);
    case VT_BOOL:
      return value.boolVal != VARIANT_FALSE ? "Yes" : "No";
    case VT_BSTR:
      return value.bstrVal != nullptr ? oneLine(value.bstrVal) : "";
    case VT_DISPATCH:
      return objectText(value.pdispVal);
    default:
      return "";
  }
}

// --- what JSON says in place of pointers -----------------------------------------------------------------

nlohmann::ordered_json handleJson(VkDbObjectId id) {
  const std::optional<database::ObjectRef> object = database::resolve(id);
  if (!object) return nullptr;
  return fmt::format("{:X}", database::Entity(*object).handle());
}

nlohmann::ordered_json entityBehind(IUnknown* automationObject) {
  const Reference<IVeltBaseObject> baseObject(automationObject, IID_IVeltBaseObject);
  VkDbObjectId id;
  if (baseObject) baseObject->GetObjectId(&id);
  return handleJson(id);
}

nlohmann::ordered_json sourcesJson(const TqVector<DispatchDynPropSourceNode>& sources) {
  auto list = nlohmann::ordered_json::array();
  for (const DispatchDynPropSourceNode& node : sources) {
    list.push_back({{"pDispatch", entityBehind(node.pDispatch)},
                    {"pDynamicProperty", node.pDynamicProperty != nullptr}});
  }
  return list;
}

std::optional<int> precisionIn(const database::Drawing& drawing, std::string_view variable) {
  const std::optional<std::string_view> value = drawing.document().headerValue(variable, 70);
  if (!value) return std::nullopt;
  constexpr int mostPlaces = 8;
  const int places = std::atoi(std::string(*value).c_str());
  return std::clamp(places, 0, mostPlaces);
}

}  // namespace

NumberStyle numberStyleOf(const database::Drawing& drawing) {
  NumberStyle style;
  style.lengthPlaces = precisionIn(drawing, "$LUPREC").value_or(style.lengthPlaces);
  style.anglePlaces = precisionIn(drawing, "$AUPREC").value_or(style.anglePlaces);
  return style;
}

std::string valueText(const PROPINFO& row, const NumberStyle& style) {
  return row.isVaries ? variesText : ownValueText(row, style);
}

nlohmann::ordered_json valueJson(const PROPINFO& row, const NumberStyle& style) {
  const VARIANT& value = row.value;
  if (const std::optional<long long> integer = integerIn(value)) return *integer;
  switch (value.vt) {
    case VT_UI8:
      return value.ullVal;
    case VT_R4:
      return static_cast<double>(value.fltVal);
    case VT_R8:
      return value.dblVal;
    case VT_BOOL:
      return value.boolVal != VARIANT_FALSE;
    case VT_BSTR:
      return value.bstrVal != nullptr ? toUtf8(value.bstrVal) : "";
    case VT_DISPATCH:
      return ownValueText(row, style);
    default:
      return nullptr;
  }
}

std::string guidText(const GUID& guid) {
  const std::uint8_t* const d = guid.Data4;
  return fmt::format("{:08X}-{:04X}-{:04X}-{:02X}{:02X}-{:02X}{:02X}{:02X}{:02X}{:02X}{:02X}", guid.Data1,
                     guid.Data2, guid.Data3, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]);
}

nlohmann::ordered_json rowJson(const PROPINFO& row, const NumberStyle& style) {
  auto choiceNames = nlohmann::ordered_json::array();
  for (const CStdStr<wchar_t>& name : row.choiceNames)
    choiceNames.push_back(toUtf8(name.str()));
  auto choiceValues = nlohmann::ordered_json::array();
  for (const int value : row.choiceValues)
    choiceValues.push_back(value);
  auto choiceReals = nlohmann::ordered_json::array();
  for (const double value : row.choiceReals)
    choiceReals.push_back(value);

  return {
      {"clsid", guidText(row.clsid)},
      {"pDispatch", entityBehind(row.pDispatch)},
      {"dispId", row.dispId},
      {"name", toUtf8(row.name.str())},
      {"description", toUtf8(row.description.str())},
      {"displayName", toUtf8(row.displayName.str())},
      {"value", valueJson(row, style)},
      {"categoryId", row.categoryId},
      {"categoryName", toUtf8(row.categoryName.str())},
      {"isElement", row.isElement},
      {"elementCookie", row.elementCookie},
      {"hasChoices", row.hasChoices},
      {"choiceNames", std::move(choiceNames)},
      {"choiceValues", std::move(choiceValues)},
      {"isWritable", row.isWritable},
      {"isEditable", row.isEditable},
      {"isVaries", row.isVaries},
      {"customType", row.customType},
      {"groupCount", row.groupCount},
      {"elementGrouping", row.elementGrouping},
      {"weight", row.weight},
      {"sortByCookie", row.sortByCookie},
      {"objectId", handleJson(row.objectId)},
      {"valueType", row.valueType},
      {"hasValue", row.hasValue},
      {"pDynamicProperty", row.pDynamicProperty != nullptr},
      {"dynSources", sourcesJson(row.dynSources)},
      {"choiceReals", std::move(choiceReals)},
      {"text", valueText(row, style)},
  };
}

}  // namespace velt::tool
