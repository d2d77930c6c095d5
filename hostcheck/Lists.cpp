// The lists that an object gives of a property: its choices, and its elements.

#include <set>
#include <string>

#include "holders/CountedStringsHolder.h"
#include "holders/InterfaceHolder.h"
#include "holders/VariantHolder.h"
#include "host/com/IPerPropertyBrowsing.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "hostcheck/Checks.h"

using namespace velt::holders;

namespace velt::hostcheck {

namespace {

std::string counts(const CountedStringsHolder& list) {
  return std::to_string(list.stringCount()) + " texts and " + std::to_string(list.cookieCount()) + " cookies";
}

bool hasAllTexts(CountedStringsHolder& list) {
  for (ULONG i = 0; i < list.stringCount(); ++i) {
    if (list.string(i) == nullptr) return false;
  }
  return true;
}

bool isReal(VARTYPE type) {
  return type == VT_R4 || type == VT_R8 || type == VT_DATE || type == VT_CY;
}

// Who asks for a list frees it: the arrays, and each text. So what is handed out in two places is freed twice.
bool isSomethingShared(const CountedStringsHolder& list, const CountedStringsHolder& again) {
  std::set<const void*> blocks;
  bool isShared = false;
  const auto hold = [&](const void* block) {
    if (block != nullptr) isShared = !blocks.insert(block).second || isShared;
  };
  for (const CountedStringsHolder* const one : {&list, &again}) {
    hold(one->get().strings.pElems);
    hold(one->get().cookies.pElems);
    for (ULONG i = 0; i < one->stringCount(); ++i)
      hold(one->string(i));
  }
  return isShared;
}

void checkOwnership(Findings& findings, CountedStringsHolder& list, CountedStringsHolder& again) {
  const bool isShared = isSomethingShared(list, again);
  findings.expect(!isShared, "list-ownership",
                  "arrays and texts of its own for each call, which the caller frees", "the same ones twice");
  if (!isShared) return;
  // Nobody knows who frees them.
  static_cast<void>(list.detach());
  static_cast<void>(again.detach());
}

// Labels are all that users see of an element: the name is the property's. The elements of a property with groups are
// told apart by their group, too.
void checkLabels(Findings& findings, IOPMPropertyExpander& expander, const Property& property,
                 CountedStringsHolder& list) {
  SHORT grouping = 0;
  findings.call("GetElementGrouping",
                [&] { return expander.GetElementGrouping(property.dispId, &grouping); });
  if (grouping != 0) return;
  std::set<std::wstring> labels;
  for (ULONG i = 0; i < list.stringCount(); ++i) {
    if (list.string(i) == nullptr) continue;
    const std::wstring label = list.string(i);
    findings.expect(!label.empty() && labels.insert(label).second, "element-labels",
                    "each element has a label of its own",
                    label.empty() ? "an empty one" : narrow(label.c_str()) + " twice");
  }
}

}  // namespace

void checkChoices(Findings& findings, IUnknown& unknown, const Property& property) {
  InterfaceHolder<IPerPropertyBrowsing> browsing;
  if (FAILED(query(&unknown, IID_IPerPropertyBrowsing, browsing)))
    return findings.cannotTry("choice-lists",
                              "the objects have no IPerPropertyBrowsing: rows have no choices");
  CountedStringsHolder list;
  const HRESULT result = findings.call("GetPredefinedStrings", [&] {
    return browsing->GetPredefinedStrings(property.dispId, list.putStrings(), list.putCookies());
  });
  if (!handedOver(result, list)) return;
  const bool isWhole = findings.expect(list.stringCount() == list.cookieCount(), "choice-lists",
                                       "as many cookies as texts of choices", counts(list));
  findings.expect(hasAllTexts(list), "choice-lists", "a text for each choice", "null");
  CountedStringsHolder again;
  const HRESULT repeated = findings.call("GetPredefinedStrings", [&] {
    return browsing->GetPredefinedStrings(property.dispId, again.putStrings(), again.putCookies());
  });
  const ULONG choices = list.stringCount();
  if (handedOver(repeated, again)) checkOwnership(findings, list, again);
  if (!isWhole) return;
  for (ULONG place = 0; place < choices; ++place) {
    VariantHolder value;
    // As the layer asks: by the place, whatever the cookie is.
    const HRESULT answered = findings.call("GetPredefinedValue", [&] {
      return browsing->GetPredefinedValue(property.dispId, place, value.put());
    });
    const bool isAnswered = handedOver(answered, value);
    if (isAnswered)
      findings.expect(!isReal(value.get().vt), "choice-types",
                      "an integer or a text as the value of the choice at place " + std::to_string(place),
                      "a value of the type " + std::to_string(value.get().vt));
    // What an object answers other than a text stays its own.
    if (value.get().vt != VT_BSTR) static_cast<void>(value.detach());
    findings.expect(isAnswered || answered == E_NOTIMPL, "choice-values",
                    "GetPredefinedValue answers the value of the choice at place " + std::to_string(place)
                        + ", or E_NOTIMPL",
                    hex(answered));
  }
}

void checkElements(Findings& findings, IUnknown& unknown, const Property& property) {
  InterfaceHolder<IOPMPropertyExpander> expander;
  if (property.type != VT_VARIANT || FAILED(query(&unknown, IID_IOPMPropertyExpander, expander))) return;
  CountedStringsHolder list;
  const HRESULT result = findings.call("GetElementStrings", [&] {
    return expander->GetElementStrings(property.dispId, list.putStrings(), list.putCookies());
  });
  if (!handedOver(result, list)) return;
  if (!findings.expect(list.stringCount() == list.cookieCount(), "element-lists",
                       "as many cookies as texts of elements", counts(list)))
    return;
  findings.expect(hasAllTexts(list), "element-lists", "a text for each element", "null");
  checkLabels(findings, *expander.get(), property, list);
  std::set<DWORD> cookies;
  for (ULONG i = 0; i < list.cookieCount(); ++i) {
    const DWORD cookie = list.cookie(i);
    findings.expect(cookies.insert(cookie).second, "element-cookies", "each element has a cookie of its own",
                    std::to_string(cookie) + " twice");
    VariantHolder value;
    const HRESULT answered = findings.call(
        "GetElementValue", [&] { return expander->GetElementValue(property.dispId, cookie, value.put()); });
    const bool isAnswered = handedOver(answered, value);
    findings.expect(isAnswered, "element-values",
                    "GetElementValue answers the value of element " + std::to_string(cookie), hex(answered));
  }
  CountedStringsHolder again;
  const HRESULT repeated = findings.call("GetElementStrings", [&] {
    return expander->GetElementStrings(property.dispId, again.putStrings(), again.putCookies());
  });
  const bool isRepeated = handedOver(repeated, again) && again.cookieCount() == list.cookieCount();
  bool isSame = isRepeated;
  for (ULONG i = 0; isSame && i < list.cookieCount(); ++i)
    isSame = again.cookie(i) == list.cookie(i);
  findings.expect(isSame, "element-cookies", "the same cookies each time, while nothing changes", "others");
  checkOwnership(findings, list, again);
}

}  // namespace velt::hostcheck
