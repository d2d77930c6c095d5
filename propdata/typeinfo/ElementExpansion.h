#pragma once

// Splitting a property into its elements, whatever is made of them. A template, because a query does it for every entity.

#include <cstdint>

#include "errors/Messages.h"
#include "holders/CountedStringsHolder.h"
#include "holders/InterfaceHolder.h"
#include "holders/VariantHolder.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "propdata/VeltPropData.h"

namespace velt::propdata {

template <class Receiver>
bool readElement(IOPMPropertyExpander& expander, DISPID dispId, DWORD cookie, const OLECHAR* label,
                 Receiver& receiver) {
  holders::VariantHolder value;
  if (!holders::handedOver(expander.GetElementValue(dispId, cookie, value.put()), value)) return false;
  receiver.addElement(label, cookie, value.get());
  [[maybe_unused]] const VARIANT ownedByTheReceiver = value.detach();
  return true;
}

// Hands the elements to the receiver, which takes them by these functions, called in this order; whatever one of them
// throws ends the expansion:
//
//   void expect(std::uint32_t count)        at most so many follow, a header included; called once it is known that the
//                                           property can be split
//   void addHeader()                        the property is grouped: a row stands before those of its elements
//   void beginElements()                    what follows are elements
//   void addElement(const OLECHAR* label, DWORD cookie, const VARIANT& value)
//                                           the value goes over to the receiver, unless it throws; the label may be null
//
// grouping and groupCount are left alone where the object does not get as far.
template <class Receiver>
[[gnu::always_inline]] inline bool expandProperty(IDispatch* object, DISPID dispId, SHORT& grouping,
                                                  long& groupCount, Receiver& receiver,
                                                  CStdStr<wchar_t>& errorText) {
  using namespace holders;
  namespace message = errors::message;
  // Freed once the expander is released.
  CountedStringsHolder elements;
  InterfaceHolder<IOPMPropertyExpander> expander;
  if (FAILED(query(object, IID_IOPMPropertyExpander, expander)))
    return errors::failWith(errorText, message::noExpander);
  if (!handedOver(expander->GetElementStrings(dispId, elements.putStrings(), elements.putCookies()),
                  elements)) {
    return errors::failWith(errorText, message::elementStrings);
  }
  // QUIRK(grouping_results_unexamined): neither this result nor that of the count is looked at: expanders without
  // groups refuse both calls.
  SHORT answer = 0;
  [[maybe_unused]] const HRESULT grouped = expander->GetElementGrouping(dispId, &answer);
  grouping = answer;
  const ULONG count = elements.cookieCount();
  receiver.expect((answer != 0 ? 1 : 0) + count);
  if (answer != 0) {
    [[maybe_unused]] const HRESULT counted = expander->GetGroupCount(dispId, &groupCount);
    receiver.addHeader();
  }
  receiver.beginElements();
  for (ULONG i = 0; i < count; ++i) {
    if (!readElement(*expander.get(), dispId, elements.cookie(i), elements.string(i), receiver))
      return errors::failWith(errorText, message::elementValue);
  }
  return true;
}

}  // namespace velt::propdata
