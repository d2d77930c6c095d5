#pragma once

// Automation objects for tests: made, bound, and asked in one line.

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "embedded/automation/model/AutomationObject.h"
#include "holders/CountedStringsHolder.h"
#include "holders/InterfaceHolder.h"
#include "holders/StringHolder.h"
#include "holders/VariantHolder.h"
#include "host/automation/TqAutoCreateInstance.h"
#include "host/com/ComRuntime.h"
#include "host/database/OpenObject.h"
#include "tests/embedded/com/Balance.h"
#include "tests/embedded/database/Sample.h"
#include "tests/support/Variants.h"

namespace velt::automation::test {

using com::Balance;
using database::Drawing;
using database::test::Pairs;
using database::test::Sample;
using holders::CountedStringsHolder;
using holders::InterfaceHolder;
using holders::StringHolder;
using holders::VariantHolder;
using holders::handedOver;

// Makes what is made once per process, so that the ledger of a test shows the test alone.
inline void makeRegistry() {
  static_cast<void>(ClassRegistry::ofHost());
}

template <class Interface>
InterfaceHolder<Interface> ask(IUnknown& object) {
  InterfaceHolder<Interface> found;
  void* asked = nullptr;
  if (SUCCEEDED(object.QueryInterface(com::InterfaceTraits<Interface>::iid, &asked))) {
    found.attach(static_cast<Interface*>(asked));
  }
  return found;
}

// What a caller of Invoke gets, whatever it is.
struct Answer {
  HRESULT result = E_UNEXPECTED;
  VariantHolder value;
  HRESULT scode = S_OK;
  std::wstring source;
  std::wstring description;
};

inline Answer invoke(IDispatch& object, DISPID id, WORD flags, std::vector<VARIANT> arguments = {}) {
  Answer answer;
  DISPID put = DISPID_PROPERTYPUT;
  const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  DISPPARAMS params{arguments.data(), isPut ? &put : nullptr, static_cast<UINT>(arguments.size()),
                    isPut ? 1U : 0U};
  EXCEPINFO exception{};
  answer.result = object.Invoke(id, GUID_NULL, LOCALE_USER_DEFAULT, flags, &params, answer.value.put(),
                                &exception, nullptr);
  StringHolder source;
  StringHolder description;
  source.attach(exception.bstrSource);
  description.attach(exception.bstrDescription);
  SysFreeString(exception.bstrHelpFile);
  answer.scode = exception.scode;
  answer.source = source.view();
  answer.description = description.view();
  return answer;
}

inline std::wstring textOf(const VARIANT& value) {
  return value.vt == VT_BSTR && value.bstrVal != nullptr
             ? std::wstring(value.bstrVal, SysStringLen(value.bstrVal))
             : L"(no text)";
}

inline std::vector<double> numbersOf(const VARIANT& value) {
  if (value.vt != (VT_ARRAY | VT_R8)) return {};
  const auto* first = static_cast<const double*>(value.parray->pvData);
  return {first, first + value.parray->rgsabound[0].cElements};
}

inline VARIANT number(double value) {
  return variants::r8(value);
}
inline VARIANT integer(LONG value) {
  return variants::i4(value);
}
inline VARIANT flag(bool value) {
  return variants::boolean(value);
}
inline VARIANT object(IDispatch* value) {
  return variants::borrowed(value);
}

// One automation object; asked by the names of its properties.
class Bound {
 public:
  explicit Bound(InterfaceHolder<IDispatch> object) : object_(std::move(object)) {}

  // Of the class that the database names, bound to the entity of that number.
  Bound(const Drawing& drawing, std::size_t entity) : Bound(drawing.entities()[entity]) {}
  explicit Bound(VkDbObjectId id) : Bound(created(id)) {
    EXPECT_EQ(S_OK, as<IVeltBaseObject>()->SetObjectId(id, VkDbObjectId::kNull, nullptr));
  }

  [[nodiscard]] IDispatch& dispatch() const { return *object_.get(); }
  template <class Interface>
  [[nodiscard]] InterfaceHolder<Interface> as() const {
    InterfaceHolder<Interface> found = ask<Interface>(*object_.get());
    if (!found) throw std::runtime_error("the object lacks an interface");
    return found;
  }

  // 0 for an unknown name.
  [[nodiscard]] DISPID id(const wchar_t* name) const {
    auto* asked = const_cast<wchar_t*>(name);
    DISPID found = 0;
    return SUCCEEDED(dispatch().GetIDsOfNames(GUID_NULL, &asked, 1, LOCALE_SYSTEM_DEFAULT, &found)) ? found
                                                                                                    : 0;
  }

  [[nodiscard]] Answer get(const wchar_t* name) const {
    return invoke(dispatch(), id(name), DISPATCH_PROPERTYGET);
  }
  Answer put(const wchar_t* name, const VARIANT& value) const {
    return invoke(dispatch(), id(name), DISPATCH_PROPERTYPUT, {value});
  }
  Answer put(const wchar_t* name, const std::wstring& text) const {
    VARIANT value{};
    value.vt = VT_BSTR;
    const StringHolder held(text);
    value.bstrVal = held.get();
    return put(name, value);
  }

  [[nodiscard]] double real(const wchar_t* name) const {
    const Answer answer = get(name);
    EXPECT_EQ(S_OK, answer.result) << answer.description.size();
    EXPECT_EQ(VT_R8, answer.value.get().vt);
    return answer.value.get().vt == VT_R8 ? answer.value.get().dblVal : -1e300;
  }
  [[nodiscard]] LONG integer(const wchar_t* name) const {
    const Answer answer = get(name);
    EXPECT_EQ(S_OK, answer.result);
    EXPECT_EQ(VT_I4, answer.value.get().vt);
    return answer.value.get().vt == VT_I4 ? answer.value.get().lVal : -999;
  }
  [[nodiscard]] bool flag(const wchar_t* name) const {
    const Answer answer = get(name);
    EXPECT_EQ(S_OK, answer.result);
    EXPECT_EQ(VT_BOOL, answer.value.get().vt);
    return answer.value.get().boolVal == VARIANT_TRUE;
  }
  [[nodiscard]] std::wstring text(const wchar_t* name) const {
    const Answer answer = get(name);
    EXPECT_EQ(S_OK, answer.result);
    return textOf(answer.value.get());
  }
  [[nodiscard]] std::vector<double> numbers(const wchar_t* name) const {
    const Answer answer = get(name);
    EXPECT_EQ(S_OK, answer.result);
    return numbersOf(answer.value.get());
  }

  [[nodiscard]] double element(const wchar_t* name, DWORD cookie) const {
    VariantHolder value;
    EXPECT_EQ(S_OK, as<IOPMPropertyExpander>()->GetElementValue(id(name), cookie, value.put()));
    return value.get().vt == VT_R8 ? value.get().dblVal : -1e300;
  }
  HRESULT putElement(const wchar_t* name, DWORD cookie, double value) const {
    return as<IOPMPropertyExpander>()->SetElementValue(id(name), cookie, test::number(value));
  }

  [[nodiscard]] std::vector<std::wstring> elementLabels(const wchar_t* name) const {
    CountedStringsHolder lists;
    EXPECT_EQ(S_OK, as<IOPMPropertyExpander>()->GetElementStrings(id(name), lists.putStrings(),
                                                                  lists.putCookies()));
    return textsOf(lists);
  }
  // Nothing for a property without choices.
  [[nodiscard]] std::optional<std::vector<std::wstring>> choices(const wchar_t* name) const {
    CountedStringsHolder lists;
    const HRESULT result =
        as<IPerPropertyBrowsing>()->GetPredefinedStrings(id(name), lists.putStrings(), lists.putCookies());
    if (!handedOver(result, lists)) return std::nullopt;
    EXPECT_EQ(S_OK, result);
    return textsOf(lists);
  }
  [[nodiscard]] VariantHolder choiceValue(const wchar_t* name, DWORD cookie) const {
    VariantHolder value;
    EXPECT_EQ(S_OK, as<IPerPropertyBrowsing>()->GetPredefinedValue(id(name), cookie, value.put()));
    return value;
  }
  [[nodiscard]] int shown(const wchar_t* name) const {
    BOOL show = 77;
    EXPECT_EQ(S_OK, as<IOPMPropertyExtension>()->ShowProperty(id(name), &show));
    return show;
  }

  // Cookies must count from 0.
  static std::vector<std::wstring> textsOf(const CountedStringsHolder& lists) {
    std::vector<std::wstring> texts;
    EXPECT_EQ(lists.stringCount(), lists.cookieCount());
    for (ULONG i = 0; i < lists.stringCount(); ++i) {
      EXPECT_EQ(i, lists.cookie(i));
      const BSTR text = lists.get().strings.pElems[i];
      texts.emplace_back(text, SysStringLen(text));
    }
    return texts;
  }

 private:
  static InterfaceHolder<IDispatch> created(VkDbObjectId id) {
    CLSID clsid = CLSID_VeltEntity;
    VkDbEntity* entity = nullptr;
    EXPECT_EQ(Velt::eOk, vkdbOpenVkDbEntity(entity, id, VkDb::kForRead));
    if (entity != nullptr) {
      [[maybe_unused]] const auto status = entity->getClassID(&clsid);
      entity->close();
    }
    void* made = nullptr;
    EXPECT_EQ(S_OK, TqAutoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, &made));
    if (made == nullptr) throw std::runtime_error("the object cannot be made");
    return InterfaceHolder<IDispatch>::owning(static_cast<IDispatch*>(made));
  }

  InterfaceHolder<IDispatch> object_;
};

}  // namespace velt::automation::test
