#include "recorder/Values.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>
#include <new>
#include <stdexcept>

#include "host/com/ComRuntime.h"
#include "recorder/Interfaces.h"
#include "recorder/Session.h"

// Only a replay makes values; a host that is recorded need not have these.
#pragma weak CoTaskMemAlloc
#pragma weak SafeArrayCreate
#pragma weak SafeArrayDestroy
#pragma weak SafeArrayPutElement
#pragma weak SysAllocStringLen

namespace velt::recorder {

namespace {

constexpr std::uint32_t lastCharacter = 0x10FFFF;

bool isCharacter(std::uint32_t unit) {
  return unit <= lastCharacter && (unit < 0xD800 || unit > 0xDFFF);
}

void appendUtf8(std::string& text, std::uint32_t unit) {
  const auto put = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
  if (unit < 0x80) {
    put(unit);
  } else if (unit < 0x800) {
    put(0xC0 | unit >> 6);
    put(0x80 | (unit & 0x3F));
  } else if (unit < 0x10000) {
    put(0xE0 | unit >> 12);
    put(0x80 | (unit >> 6 & 0x3F));
    put(0x80 | (unit & 0x3F));
  } else {
    put(0xF0 | unit >> 18);
    put(0x80 | (unit >> 12 & 0x3F));
    put(0x80 | (unit >> 6 & 0x3F));
    put(0x80 | (unit & 0x3F));
  }
}

// The JSON library has seen to it that the bytes are UTF-8.
std::wstring fromUtf8(const std::string& bytes) {
  std::wstring text;
  for (std::size_t i = 0; i < bytes.size();) {
    const auto first = static_cast<unsigned char>(bytes[i++]);
    const int further = first < 0x80 ? 0 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
    std::uint32_t unit = further == 0 ? first : first & (0x3Fu >> further);
    for (int k = 0; k < further && i < bytes.size(); ++k)
      unit = unit << 6 | (static_cast<unsigned char>(bytes[i++]) & 0x3Fu);
    text += static_cast<wchar_t>(unit);
  }
  return text;
}

[[noreturn]] void damaged(const std::string& what) {
  throw std::runtime_error(what);
}

template <class T>
T* taskMemory(std::size_t count) {
  // Never null for an empty array: a replay frees what a host would have given.
  auto* const block = static_cast<T*>(CoTaskMemAlloc(count * sizeof(T) + 1));
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

// --- arrays ---------------------------------------------------------------------------------------------------------

VARTYPE elementTypeOf(const VARIANT& value) {
  const SAFEARRAY& array = *value.parray;
  if ((array.fFeatures & FADF_BSTR) != 0) return VT_BSTR;
  if ((array.fFeatures & FADF_UNKNOWN) != 0) return VT_UNKNOWN;
  if ((array.fFeatures & FADF_DISPATCH) != 0) return VT_DISPATCH;
  if ((array.fFeatures & FADF_VARIANT) != 0) return VT_VARIANT;
  return value.vt & VT_TYPEMASK;
}

// One element as a value of its type, which owns nothing.
VARIANT elementAt(const SAFEARRAY& array, VARTYPE type, ULONG index) {
  const char* const place = static_cast<const char*>(array.pvData) + std::size_t{index} * array.cbElements;
  VARIANT element{};
  if (type == VT_VARIANT) {
    std::memcpy(&element, place, sizeof element);
    return element;
  }
  element.vt = type;
  std::memcpy(&element.llVal, place, std::min<std::size_t>(array.cbElements, sizeof element.llVal));
  return element;
}

json arrayJson(const VARIANT& value) {
  if (value.parray == nullptr) return nullptr;
  const SAFEARRAY& array = *value.parray;
  const VARTYPE type = elementTypeOf(value);
  json elements = json::array();
  // The layer reads arrays of one dimension; of others it is kept that they are none.
  if (array.cDims == 1 && array.pvData != nullptr) {
    for (ULONG i = 0; i < array.rgsabound[0].cElements; ++i)
      elements.push_back(valueJson(elementAt(array, type, i)));
  }
  return {{"type", type},
          {"dimensions", array.cDims},
          {"lower", array.cDims == 1 ? array.rgsabound[0].lLbound : 0},
          {"elements", std::move(elements)}};
}

void putElement(SAFEARRAY& array, VARTYPE type, LONG index, const json& from) {
  VARIANT element = valueFrom(from);
  void* place = &element.llVal;
  if (type == VT_VARIANT) place = &element;
  if (type == VT_BSTR || type == VT_UNKNOWN || type == VT_DISPATCH) place = element.byref;
  const HRESULT put = SafeArrayPutElement(&array, &index, place);
  VariantClear(&element);
  if (FAILED(put)) damaged("an element that its array does not take");
}

SAFEARRAY* arrayFrom(const json& from) {
  if (from.is_null()) return nullptr;
  constexpr UINT mostDimensions = 4;
  const auto type = from.at("type").get<VARTYPE>();
  const auto dimensions = from.at("dimensions").get<UINT>();
  const auto lower = from.at("lower").get<LONG>();
  const json& elements = from.at("elements");
  if (dimensions == 0 || dimensions > mostDimensions || !elements.is_array())
    damaged("an array without elements");
  std::array<SAFEARRAYBOUND, mostDimensions> bounds{};
  bounds[0] = {static_cast<ULONG>(elements.size()), lower};
  SAFEARRAY* const array = SafeArrayCreate(type, dimensions, bounds.data());
  if (array == nullptr) damaged("an array of no known type");
  for (std::size_t i = 0; dimensions == 1 && i < elements.size(); ++i)
    putElement(*array, type, static_cast<LONG>(lower + static_cast<LONG>(i)), elements[i]);
  return array;
}

// --- classes --------------------------------------------------------------------------------------------------------

std::map<const VkRxClass*, std::string>& classNames() {
  static auto& all = *new std::map<const VkRxClass*, std::string>;
  return all;
}

// What VkCmColor keeps. A host need not export the functions that tell it, since the layer does not call them.
struct ColorLayout {
  std::uint32_t value;
  const wchar_t* colorName;
  const wchar_t* bookName;
};
static_assert(sizeof(ColorLayout) == sizeof(VkCmColor));

}  // namespace

// --- texts ----------------------------------------------------------------------------------------------------------

json textJson(const wchar_t* text, std::size_t length) {
  std::string bytes;
  for (std::size_t i = 0; i < length; ++i) {
    const auto unit = static_cast<std::uint32_t>(text[i]);
    if (!isCharacter(unit)) {
      json units = json::array();
      for (std::size_t k = 0; k < length; ++k)
        units.push_back(static_cast<std::uint32_t>(text[k]));
      return {{"units", std::move(units)}};
    }
    appendUtf8(bytes, unit);
  }
  return {{"text", std::move(bytes)}};
}

json textJson(const wchar_t* text) {
  return text != nullptr ? textJson(text, std::wcslen(text)) : json();
}

json stringJson(BSTR string) {
  if (string == nullptr) return nullptr;
  std::uint32_t bytes = 0;
  std::memcpy(&bytes, reinterpret_cast<const char*>(string) - sizeof bytes, sizeof bytes);
  return textJson(string, bytes / sizeof(wchar_t));
}

std::wstring textFrom(const json& text) {
  if (text.is_null()) return {};
  if (const auto units = text.find("units"); units != text.end()) {
    std::wstring result;
    for (const json& unit : *units)
      result += static_cast<wchar_t>(unit.get<std::uint32_t>());
    return result;
  }
  return fromUtf8(text.at("text").get<std::string>());
}

BSTR stringFrom(const json& text) {
  if (text.is_null()) return nullptr;
  const std::wstring characters = textFrom(text);
  return SysAllocStringLen(characters.data(), static_cast<UINT>(characters.size()));
}

// --- numbers and records --------------------------------------------------------------------------------------------

json guidJson(const GUID& guid) {
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X", guid.Data1,
                guid.Data2, guid.Data3, guid.Data4[0], guid.Data4[1], guid.Data4[2], guid.Data4[3],
                guid.Data4[4], guid.Data4[5], guid.Data4[6], guid.Data4[7]);
  return text.data();
}

GUID guidFrom(const json& text) {
  GUID guid{};
  auto& b = guid.Data4;
  const auto written = text.get<std::string>();
  if (std::sscanf(written.c_str(), "%8X-%4hX-%4hX-%2hhX%2hhX-%2hhX%2hhX%2hhX%2hhX%2hhX%2hhX", &guid.Data1,
                  &guid.Data2, &guid.Data3, &b[0], &b[1], &b[2], &b[3], &b[4], &b[5], &b[6], &b[7])
      != 11)
    damaged("\"" + written + "\" is not an identifier");
  return guid;
}

json idJson(VkDbObjectId id) {
  return id.asOldId();
}

VkDbObjectId idFrom(const json& number) {
  return VkDbObjectId().setFromOldId(number.get<long>());
}

json realJson(double value) {
  if (std::isfinite(value)) return value;
  return {{"bits", std::bit_cast<std::uint64_t>(value)}};
}

double realFrom(const json& value) {
  return value.is_object() ? std::bit_cast<double>(value.at("bits").get<std::uint64_t>())
                           : value.get<double>();
}

json colorJson(const VkCmColor& color) {
  ColorLayout parts;
  std::memcpy(&parts, static_cast<const void*>(&color), sizeof parts);
  return {{"value", parts.value},
          {"colorName", textJson(parts.colorName)},
          {"bookName", textJson(parts.bookName)}};
}

VkCmColor colorFrom(const json& color) {
  VkCmColor result;
  result.setColor(color.at("value").get<std::uint32_t>());
  result.setNames(textFrom(color.at("colorName")).c_str(), textFrom(color.at("bookName")).c_str());
  return result;
}

json valueJson(const VARIANT& value, bool deep) {
  json written{{"vt", value.vt}};
  if ((value.vt & VT_BYREF) != 0) {
    // What it refers to is somebody else's. The layer reads such strings alone.
    if (deep && value.vt == (VT_BYREF | VT_BSTR) && value.byref != nullptr)
      written["value"] = stringJson(*static_cast<BSTR*>(value.byref));
    return written;
  }
  if ((value.vt & VT_ARRAY) != 0) {
    if (deep) written["value"] = arrayJson(value);
    return written;
  }
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
      break;
    case VT_BSTR:
      if (deep) written["value"] = stringJson(value.bstrVal);
      break;
    case VT_DISPATCH:
      written["value"] = numberOf(value.pdispVal);
      break;
    case VT_UNKNOWN:
      written["value"] = numberOf(value.punkVal);
      break;
    case VT_R8:
    case VT_DATE:
      written["value"] = realJson(value.dblVal);
      break;
    case VT_R4:
      written["value"] = realJson(static_cast<double>(value.fltVal));
      break;
    case VT_I2:
    case VT_BOOL:
      written["value"] = value.iVal;
      break;
    case VT_UI2:
      written["value"] = value.uiVal;
      break;
    case VT_I1:
      written["value"] = value.cVal;
      break;
    case VT_UI1:
      written["value"] = value.bVal;
      break;
    case VT_I4:
    case VT_INT:
    case VT_ERROR:
    case VT_HRESULT:
      written["value"] = value.lVal;
      break;
    case VT_UI4:
    case VT_UINT:
      written["value"] = value.ulVal;
      break;
    // Everything else by its 64 bits: whatever a host left under another type.
    default:
      written["value"] = value.llVal;
      break;
  }
  return written;
}

VARIANT valueFrom(const json& from) {
  VARIANT value{};
  value.vt = from.at("vt").get<VARTYPE>();
  const auto found = from.find("value");
  if (found == from.end()) return value;
  const json& content = *found;
  if ((value.vt & VT_BYREF) != 0) {
    // Lives as long as the replay: nobody knows when the host would have taken it back.
    if (value.vt == (VT_BYREF | VT_BSTR)) value.byref = new BSTR(stringFrom(content));
    return value;
  }
  if ((value.vt & VT_ARRAY) != 0) {
    value.parray = arrayFrom(content);
    return value;
  }
  switch (value.vt) {
    case VT_BSTR:
      value.bstrVal = stringFrom(content);
      break;
    case VT_DISPATCH:
      value.pdispVal = objectFrom<IDispatch>(content);
      break;
    case VT_UNKNOWN:
      value.punkVal = objectFrom<IUnknown>(content);
      break;
    case VT_R8:
    case VT_DATE:
      value.dblVal = realFrom(content);
      break;
    case VT_R4:
      value.fltVal = static_cast<float>(realFrom(content));
      break;
    case VT_I2:
    case VT_BOOL:
      value.iVal = content.get<SHORT>();
      break;
    case VT_UI2:
      value.uiVal = content.get<USHORT>();
      break;
    case VT_I1:
      value.cVal = content.get<std::int8_t>();
      break;
    case VT_UI1:
      value.bVal = content.get<BYTE>();
      break;
    case VT_I4:
    case VT_INT:
    case VT_ERROR:
    case VT_HRESULT:
      value.lVal = content.get<LONG>();
      break;
    case VT_UI4:
    case VT_UINT:
      value.ulVal = content.get<ULONG>();
      break;
    case VT_RECORD:
      damaged("a record, of which a recording keeps nothing");
    default:
      value.llVal = content.get<LONGLONG>();
      break;
  }
  return value;
}

json textsJson(const CALPOLESTR& texts) {
  json written = json::array();
  for (ULONG i = 0; texts.pElems != nullptr && i < texts.cElems; ++i)
    written.push_back(stringJson(texts.pElems[i]));
  return written;
}

CALPOLESTR textsFrom(const json& texts) {
  CALPOLESTR result{static_cast<ULONG>(texts.size()), taskMemory<LPOLESTR>(texts.size())};
  for (std::size_t i = 0; i < texts.size(); ++i)
    result.pElems[i] = stringFrom(texts.at(i));
  return result;
}

json cookiesJson(const CADWORD& cookies) {
  json written = json::array();
  for (ULONG i = 0; cookies.pElems != nullptr && i < cookies.cElems; ++i)
    written.push_back(cookies.pElems[i]);
  return written;
}

CADWORD cookiesFrom(const json& cookies) {
  CADWORD result{static_cast<ULONG>(cookies.size()), taskMemory<DWORD>(cookies.size())};
  for (std::size_t i = 0; i < cookies.size(); ++i)
    result.pElems[i] = cookies.at(i).get<DWORD>();
  return result;
}

// --- classes of the database ----------------------------------------------------------------------------------------

void nameClass(const VkRxClass* rxClass, const std::string& name) {
  if (rxClass != nullptr) classNames()[rxClass] = name;
}

json classJson(const VkRxClass* rxClass) {
  if (rxClass == nullptr) return nullptr;
  auto& names = classNames();
  return names.try_emplace(rxClass, "class " + std::to_string(names.size())).first->second;
}

VkRxClass* classFrom(const json& name) {
  if (name.is_null()) return nullptr;
  const auto wanted = name.get<std::string>();
  for (const auto& [known, itsName] : classNames()) {
    if (itsName == wanted) return const_cast<VkRxClass*>(known);
  }
  // Nobody looks into it: the layer passes classes on.
  auto* const made = reinterpret_cast<VkRxClass*>(new std::array<void*, 4>{});
  nameClass(made, wanted);
  return made;
}

}  // namespace velt::recorder
