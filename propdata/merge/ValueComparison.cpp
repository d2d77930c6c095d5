// Whether two entities' rows are the same property, and whether their values agree.

#include <cmath>
#include <cstring>
#include <cwchar>

#include "errors/Guard.h"
#include "errors/Messages.h"
#include "holders/CountedStringsHolder.h"
#include "holders/InterfaceHolder.h"
#include "holders/StringHolder.h"
#include "host/automation/IVeltHyperlinks.h"
#include "host/com/ComRuntime.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "propdata/VeltPropData.h"
#include "propdata/merge/Cores.h"

using namespace velt::holders;
using namespace velt::propdata;
using velt::errors::failWith;
using velt::errors::guarded;
namespace message = velt::errors::message;

namespace {

constexpr std::int32_t equal = 0;
constexpr std::int32_t different = 1;
constexpr std::int32_t ofOtherType = -1;
constexpr DISPID hyperlinksDispId = 1301;

bool isSameProperty(const PROPINFO& a, const PROPINFO& b) {
  return a.categoryId == b.categoryId && a.categoryName == b.categoryName && a.name == b.name
         && a.displayName == b.displayName && a.isEditable == b.isEditable && a.hasChoices == b.hasChoices
         && a.isElement == b.isElement;
}

[[gnu::always_inline]] inline bool countElements(IDispatch* object, const CStdStr<wchar_t>& name,
                                                 ULONG& count, CStdStr<wchar_t>& errorText) {
  // GetIDsOfNames takes no pointer to const, although it only reads.
  LPOLESTR names = const_cast<LPOLESTR>(name.c_str());
  DISPID dispId = 0;
  if (object == nullptr
      || FAILED(object->GetIDsOfNames(GUID_NULL, &names, 1, LOCALE_SYSTEM_DEFAULT, &dispId))) {
    return failWith(errorText, message::nameNotFound, name);
  }
  // Freed once the expander is released.
  CountedStringsHolder elements;
  InterfaceHolder<IOPMPropertyExpander> expander;
  if (FAILED(query(object, IID_IOPMPropertyExpander, expander)))
    return failWith(errorText, message::noExpander);
  if (!handedOver(expander->GetElementStrings(dispId, elements.putStrings(), elements.putCookies()),
                  elements)) {
    return failWith(errorText, message::elementStrings);
  }
  count = elements.cookieCount();
  return true;
}

bool showsAnotherLayerColor(const PROPINFO& first, VkDbObjectId other) {
  return first.value.vt == VT_DISPATCH && first.value.pdispVal != nullptr && first.dispId != hyperlinksDispId
         && differByLayerColors(first, other);
}

std::int32_t differs(bool unequal) {
  return unequal ? different : equal;
}

// A null string equals nothing, not even another one.
template <class CharT, class Compare>
std::int32_t compareStrings(const CharT* a, const CharT* b, Compare compare) {
  if (a == nullptr || b == nullptr) return different;
  return differs(compare(a, b) != 0);
}

void readFirstUrl(IVeltHyperlinks& hyperlinks, StringHolder& url) {
  InterfaceHolder<IVeltHyperlink> hyperlink;
  if (!handedOver(hyperlinks.Item(0, hyperlink.put()), hyperlink) || !hyperlink) return;
  // QUIRK(url_result_unexamined): a link without a URL answers a failure and no text, and two of those are equal.
  [[maybe_unused]] const HRESULT got = hyperlink->get_URL(url.put());
}

std::int32_t compareHyperlinks(IDispatch* a, IDispatch* b) {
  InterfaceHolder<IVeltHyperlinks> hyperlinksOfA;
  InterfaceHolder<IVeltHyperlinks> hyperlinksOfB;
  const HRESULT queriedA = query(a, IID_IVeltHyperlinks, hyperlinksOfA);
  const HRESULT queriedB = query(b, IID_IVeltHyperlinks, hyperlinksOfB);
  if (FAILED(queriedA) || FAILED(queriedB)) return different;
  StringHolder urlOfA;
  StringHolder urlOfB;
  readFirstUrl(*hyperlinksOfA.get(), urlOfA);
  readFirstUrl(*hyperlinksOfB.get(), urlOfB);
  if (urlOfA.get() == nullptr && urlOfB.get() == nullptr) return equal;
  return compareStrings(urlOfA.get(), urlOfB.get(), std::wcscmp);
}

std::int32_t compareObjects(const VARIANT& a, const VARIANT& b) {
  VkCmColor colorOfA;
  VkCmColor colorOfB;
  // Both are asked, whatever the first one answers.
  const bool isColorA = readColor(a, colorOfA);
  const bool isColorB = readColor(b, colorOfB);
  if (isColorA && isColorB) return differs(colorOfA != colorOfB);
  return compareHyperlinks(a.pdispVal, b.pdispVal);
}

// QUIRK(lpwstr_indirection): the pointer of a VT_LPWSTR value leads to a string pointer, not to characters.
const wchar_t* stringOf(const VARIANT& value) {
  return value.byref != nullptr ? *static_cast<wchar_t**>(value.byref) : nullptr;
}

inline std::int32_t compareValues(const VARIANT& a, const VARIANT& b) {
  if (a.vt != b.vt) return ofOtherType;
  switch (a.vt) {
    case VT_I1:
    case VT_UI1:
      return differs(a.bVal != b.bVal);
    case VT_I2:
    case VT_BOOL:
    case VT_UI2:
      return differs(a.uiVal != b.uiVal);
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
      return differs(a.ulVal != b.ulVal);
    case VT_I8:
    case VT_UI8:
      return differs(a.ullVal != b.ullVal);
    case VT_R4:
      return differs(!(static_cast<double>(std::fabs(a.fltVal - b.fltVal)) < 0.0001));
    case VT_R8:
      return differs(!(std::fabs(a.dblVal - b.dblVal) < 1e-8));
    case VT_BSTR:
      return compareStrings(a.bstrVal, b.bstrVal, std::wcscmp);
    case VT_LPSTR:
      return compareStrings(a.pcVal, b.pcVal, std::strcmp);
    case VT_LPWSTR:
      return compareStrings(stringOf(a), stringOf(b), std::wcscmp);
    case VT_DISPATCH:
      return compareObjects(a, b);
    default:
      // QUIRK(incomparable_values_differ): two empty values, like two null strings and two NaNs above, differ:
      // such a property shows as varying.
      return different;
  }
}

}  // namespace

namespace velt::propdata {

Stop compareRows(PROPINFO& first, const PROPINFO& other, CStdStr<wchar_t>& errorText) {
  if (!isSameProperty(first, other)) return Stop::GoOn;
  return first.isElement ? compareElement(first, other.pDispatch, other.value, errorText)
                         : compareValue(first, other.objectId, other.value);
}

Stop compareValue(PROPINFO& first, const VkDbObjectId& otherId, const VARIANT& value) {
  switch (compareValues(first.value, value)) {
    case ofOtherType:
      // QUIRK(type_mismatch_ends_search): the property counts as missing there, although a later row might fit;
      // objects that list a property in two forms put first the one to go by.
      return Stop::Missing;
    case different:
      first.isVaries = true;
      return Stop::Found;
    default:
      if (showsAnotherLayerColor(first, otherId)) first.isVaries = true;
      return Stop::Found;
  }
}

// The search for an element is over once the counts of both properties could be compared.
Stop compareElement(PROPINFO& first, IDispatch* other, const VARIANT& value, CStdStr<wchar_t>& errorText) {
  ULONG countOfFirst = 0;
  ULONG countOfOther = 0;
  if (!countElements(first.pDispatch, first.name, countOfFirst, errorText)) return Stop::GoOn;
  if (!countElements(other, first.name, countOfOther, errorText)) return Stop::GoOn;
  if (countOfFirst != countOfOther) return Stop::Missing;
  const std::int32_t comparison = compareValues(first.value, value);
  if (comparison == ofOtherType) return Stop::Missing;
  // QUIRK(no_by_layer_check_of_elements): equal elements do not vary, whatever the layers; no object of the host has
  // by-layer colors as elements.
  if (comparison == different) first.isVaries = true;
  return Stop::Found;
}

}  // namespace velt::propdata

bool comparePropInfo(PROPINFO& first, PROPINFO& other, bool& found, CStdStr<wchar_t>& errorText) {
  found = false;
  return guarded(false, errorText, [&] {
    const Stop stop = compareRows(first, other, errorText);
    found = stop == Stop::Found;
    return stop != Stop::GoOn;
  });
}

std::int32_t CompareVARIANT(VARIANT& a, VARIANT b) {
  return guarded(different, [&] { return compareValues(a, b); });
}
