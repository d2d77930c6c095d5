#include "tests/support/ToyObject.h"

#include <gtest/gtest.h>

#include <cstring>

namespace velt::toys {

namespace {

constexpr MEMBERID memidOffset = 1000;

// Counted arrays as the caller is to free them.
void fill(CALPOLESTR* out, const std::vector<std::wstring>& texts) {
  out->cElems = static_cast<ULONG>(texts.size());
  out->pElems = static_cast<LPOLESTR*>(CoTaskMemAlloc((texts.size() + 1) * sizeof(LPOLESTR)));
  for (std::size_t i = 0; i < texts.size(); ++i)
    out->pElems[i] = newString(texts[i]);
}

void fill(CADWORD* out, const std::vector<DWORD>& numbers) {
  out->cElems = static_cast<ULONG>(numbers.size());
  out->pElems = static_cast<DWORD*>(CoTaskMemAlloc((numbers.size() + 1) * sizeof(DWORD)));
  std::copy(numbers.begin(), numbers.end(), out->pElems);
}

void fillNull(CALPOLESTR* strings, CADWORD* cookies) {
  *strings = {0, nullptr};
  *cookies = {0, nullptr};
}

// Answers for the entries of the hatch that are the host's own: nobody may call one.
HRESULT callOfForbiddenSlot(int slot) {
  const tests::AllocationPause pause;
  ADD_FAILURE() << "entry " << slot + 1 << " of the hatch called";
  return E_NOTIMPL;
}

}  // namespace

void ToyObject::freeLastArrays() {
  for (ULONG i = 0; i < lastStrings.cElems; ++i)
    SysFreeString(lastStrings.pElems[i]);
  CoTaskMemFree(lastStrings.pElems);
  CoTaskMemFree(lastCookies.pElems);
  fillNull(&lastStrings, &lastCookies);
}

struct ToyObject::Facets {
  // What the facets share: most of their calls are about one property, and answer what it says of itself.
  template <class Base>
  struct Of : Base {
    Of(ToyObject& owner, REFIID iid) : Base(owner, iid), toy(owner) {}

    // Answers with what `work` does with the property; the call fails for one that the toy does not have.
    template <class Work, class... Out>
    HRESULT about(const char* call, DISPID dispId, HRESULT unknown, const Work& work, Out*... outputs) {
      return toy.answer([&] { return say(call, "(", dispId, ")"); },
                        [&] {
                          const ToyProperty* const property = toy.find(dispId);
                          return property == nullptr ? unknown : work(*property);
                        },
                        outputs...);
    }
    // Answers with a field of the property; the call fails where it is not set.
    template <class Value, class Out>
    HRESULT field(const char* call, DISPID dispId, std::optional<Value> ToyProperty::*value, Out* out) {
      return about(
          call, dispId, E_FAIL,
          [&](const ToyProperty& property) {
            if (!(property.*value).has_value()) return E_FAIL;
            *out = *(property.*value);
            return S_OK;
          },
          out);
    }
    // Answers with names and the numbers that go with them, both for the caller to free.
    HRESULT namesAndNumbers(const std::vector<std::wstring>& names, const std::vector<DWORD>& numbers,
                            CALPOLESTR* strings, CADWORD* cookies) {
      fill(strings, names);
      fill(cookies, numbers);
      toy.lastStrings = *strings;
      toy.lastCookies = *cookies;
      return S_OK;
    }

    ToyObject& toy;
  };

  struct Dispatch final : Of<Facet<IDispatch>> {
    explicit Dispatch(ToyObject& owner) : Of(owner, IID_IDispatch) {}

    HRESULT GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT GetTypeInfo(UINT index, LCID locale, ITypeInfo** typeInfo) override {
      return toy.answer([&] { return say("GetTypeInfo(", index, ", locale ", hex(locale), ")"); },
                        [&] {
                          toy.type.referenced(IID_ITypeInfo);
                          *typeInfo = toy.type.typeInfo();
                          return S_OK;
                        },
                        typeInfo);
    }
    HRESULT GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
      return toy.answer(
          [&] {
            return say("GetIDsOfNames(", narrow(names[0]), count == 1 ? "" : say(", ", count, " names"),
                       ", locale ", hex(locale), iid == GUID_NULL ? "" : ", iid " + nameOf(iid), ")");
          },
          [&] {
            if (names[0] == nullptr) return DISP_E_UNKNOWNNAME;
            const auto found = toy.dispIds.find(names[0]);
            if (found == toy.dispIds.end()) return DISP_E_UNKNOWNNAME;
            *ids = found->second;
            return S_OK;
          },
          ids);
    }
    HRESULT Invoke(DISPID dispId, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params, VARIANT* result,
                   EXCEPINFO* exception, UINT* argumentError) override {
      const auto line = [&] {
        std::string said = say("Invoke(", dispId);
        if (flags == DISPATCH_PROPERTYGET) said += ", get";
        if (flags == DISPATCH_PROPERTYPUT) said += ", put";
        if (flags != DISPATCH_PROPERTYGET && flags != DISPATCH_PROPERTYPUT) said += say(", flags ", flags);
        for (UINT i = 0; i < params->cArgs; ++i)
          said += " " + print(params->rgvarg[i]);
        for (UINT i = 0; i < params->cNamedArgs; ++i)
          said += say(" named ", params->rgdispidNamedArgs[i]);
        said += ", locale " + hex(locale);
        said += result != nullptr ? ", result " + nameOfType(result->vt) : ", no result";
        said += exception != nullptr ? ", exception" : "";
        said += argumentError != nullptr ? ", argument error" : "";
        return said + (iid == GUID_NULL ? ")" : ", iid " + nameOf(iid) + ")");
      };
      return toy.answer(
          line,
          [&] {
            static constexpr EXCEPINFO zeroed{};
            toy.exceptionWasZeroed =
                exception != nullptr && std::memcmp(exception, &zeroed, sizeof zeroed) == 0;
            ToyProperty* const property = toy.find(dispId);
            if (property == nullptr) return DISP_E_MEMBERNOTFOUND;
            if (property->exception.has_value()) {
              if (exception != nullptr) {
                exception->bstrSource = newString(property->exception->source);
                exception->bstrDescription = newString(property->exception->description);
                exception->bstrHelpFile = newString(property->exception->helpFile);
              }
              return DISP_E_EXCEPTION;
            }
            if (!property->value.has_value()) return E_FAIL;
            if (flags == DISPATCH_PROPERTYGET) *result = property->value->make();
            return S_OK;
          },
          result);
    }
  };

  struct BaseObject final : Of<Facet<IVeltBaseObject>> {
    explicit BaseObject(ToyObject& owner) : Of(owner, IID_IVeltBaseObject) {}

    HRESULT SetObjectId(VkDbObjectId& object, VkDbObjectId owner, wchar_t* keyword) override {
      return toy.answer(
          [&] {
            return say("SetObjectId(", object.asOldId(), ", owner ", owner.asOldId(), ", ", narrow(keyword),
                       ")");
          },
          [&] { return toy.objectId = object, S_OK; });
    }
    HRESULT GetObjectId(VkDbObjectId* object) override {
      return toy.answer(
          "GetObjectId()", [&] { return *object = toy.objectId, S_OK; }, object);
    }
  };

  struct Extension final : Of<Facet<IOPMPropertyExtension>> {
    explicit Extension(ToyObject& owner) : Of(owner, IID_IOPMPropertyExtension) {}

    HRESULT GetDisplayName(DISPID dispId, BSTR* name) override {
      return about(
          "GetDisplayName", dispId, E_INVALIDARG,
          [&](const ToyProperty& property) {
            *name = property.label.has_value() ? newString(*property.label) : nullptr;
            return S_OK;
          },
          name);
    }
    HRESULT Editable(DISPID dispId, BOOL* editable) override {
      return flag("Editable", dispId, &ToyProperty::edit, editable);
    }
    HRESULT ShowProperty(DISPID dispId, BOOL* show) override {
      return flag("ShowProperty", dispId, &ToyProperty::show, show);
    }
    HRESULT flag(const char* call, DISPID dispId, std::optional<BOOL> ToyProperty::*byte, BOOL* out) {
      return about(
          call, dispId, E_INVALIDARG,
          [&](const ToyProperty& property) {
            if ((property.*byte).has_value()) *out = *(property.*byte);
            return S_OK;
          },
          out);
    }
  };

  struct Expander final : Of<Facet<IOPMPropertyExpander>> {
    explicit Expander(ToyObject& owner) : Of(owner, IID_IOPMPropertyExpander) {}

    HRESULT GetElementValue(DISPID dispId, DWORD cookie, VARIANT* value) override {
      return toy.answer([&] { return say("GetElementValue(", dispId, ", cookie ", cookie, ")"); },
                        [&] {
                          const ToyProperty* const property = toy.find(dispId);
                          if (property == nullptr) return E_INVALIDARG;
                          for (const ToyElement& element : property->elements) {
                            if (element.cookie != cookie) continue;
                            *value = element.value.make();
                            return S_OK;
                          }
                          return E_INVALIDARG;
                        },
                        value);
    }
    HRESULT SetElementValue(DISPID dispId, DWORD cookie, VARIANT value) override {
      return toy.answer(
          [&] { return say("SetElementValue(", dispId, ", cookie ", cookie, ", ", print(value), ")"); },
          [] { return S_OK; });
    }
    HRESULT GetElementStrings(DISPID dispId, CALPOLESTR* strings, CADWORD* cookies) override {
      return about(
          "GetElementStrings", dispId, E_FAIL,
          [&](const ToyProperty& property) {
            if (!property.expands) return E_FAIL;
            std::vector<std::wstring> names;
            std::vector<DWORD> numbers;
            for (const ToyElement& element : property.elements) {
              names.push_back(element.name);
              numbers.push_back(element.cookie);
            }
            names.insert(names.end(), property.extraNames.begin(), property.extraNames.end());
            return namesAndNumbers(names, numbers, strings, cookies);
          },
          strings, cookies);
    }
    HRESULT GetElementGrouping(DISPID dispId, SHORT* grouping) override {
      return field("GetElementGrouping", dispId, &ToyProperty::grouping, grouping);
    }
    HRESULT GetGroupCount(DISPID dispId, long* groups) override {
      return field("GetGroupCount", dispId, &ToyProperty::groups, groups);
    }
  };

  struct Categories final : Of<Facet<ICategorizeProperties>> {
    explicit Categories(ToyObject& owner) : Of(owner, IID_ICategorizeProperties) {}

    HRESULT MapPropertyToCategory(DISPID dispId, PROPCAT* category) override {
      return field("MapPropertyToCategory", dispId, &ToyProperty::category, category);
    }
    HRESULT GetCategoryName(PROPCAT category, LCID locale, BSTR* name) override {
      return toy.answer([&] { return say("GetCategoryName(", category, ", locale ", locale, ")"); },
                        [&] {
                          const auto found = toy.categories.find(category);
                          if (found == toy.categories.end()) return E_FAIL;
                          *name = newString(found->second);
                          return S_OK;
                        },
                        name);
    }
  };

  struct Browsing final : Of<Facet<IPerPropertyBrowsing>> {
    explicit Browsing(ToyObject& owner) : Of(owner, IID_IPerPropertyBrowsing) {}

    HRESULT GetDisplayString(DISPID, BSTR*) override { return E_NOTIMPL; }
    HRESULT MapPropertyToPage(DISPID, CLSID*) override { return E_NOTIMPL; }
    HRESULT GetPredefinedStrings(DISPID dispId, CALPOLESTR* strings, CADWORD* cookies) override {
      return about(
          "GetPredefinedStrings", dispId, E_NOTIMPL,
          [&](const ToyProperty& property) {
            if (!property.offersChoices) return E_NOTIMPL;
            std::vector<std::wstring> names;
            std::vector<DWORD> numbers;
            for (const ToyChoice& choice : property.choices) {
              numbers.push_back(static_cast<DWORD>(100 + names.size()));
              names.push_back(choice.name);
            }
            return namesAndNumbers(names, numbers, strings, cookies);
          },
          strings, cookies);
    }
    HRESULT GetPredefinedValue(DISPID dispId, DWORD cookie, VARIANT* value) override {
      return toy.answer([&] { return say("GetPredefinedValue(", dispId, ", cookie ", cookie, ")"); },
                        [&] {
                          const ToyProperty* const property = toy.find(dispId);
                          if (property == nullptr || cookie >= property->choices.size()) return E_INVALIDARG;
                          const ToyChoice& choice = property->choices[cookie];
                          if (SUCCEEDED(choice.result)) *value = choice.value.make();
                          return choice.result;
                        },
                        value);
    }
  };

  struct Display final : Of<Facet<IVkPiPropertyDisplay>> {
    explicit Display(ToyObject& owner) : Of(owner, IID_IVkPiPropertyDisplay) {}

    HRESULT GetCustomPropertyCtrl(VARIANT, LCID, BSTR*) override { return E_NOTIMPL; }
    HRESULT GetPropertyColor(VARIANT, ULONG*) override { return E_NOTIMPL; }
    HRESULT GetPropertyTextColor(VARIANT, ULONG*) override { return E_NOTIMPL; }
    HRESULT IsFullView(VARIANT, BOOL*) override { return E_NOTIMPL; }
    HRESULT GetPropertyWeight(VARIANT property, long* weight) override {
      return toy.answer([&] { return say("GetPropertyWeight(", print(property), ")"); },
                        [&] {
                          const ToyProperty* const found = toy.find(property.lVal);
                          if (found == nullptr || !found->displayWeight.has_value()) return E_FAIL;
                          *weight = *found->displayWeight;
                          return S_OK;
                        },
                        weight);
    }
  };

  struct Hatch final : Of<DualFacet<IVeltHatch>> {
    explicit Hatch(ToyObject& owner) : Of(owner, IID_IVeltHatch) {}

#define VELT_FORBIDDEN_SLOT(number)     \
  HRESULT hostSlot##number() override { \
    return callOfForbiddenSlot(number); \
  }
    VELT_HATCH_HOST_SLOTS(VELT_FORBIDDEN_SLOT)
#undef VELT_FORBIDDEN_SLOT

    HRESULT get_PropertyVariant(INT* variant) override {
      return toy.answer(
          "get_PropertyVariant()", [&] { return *variant = toy.hatchVariant, S_OK; }, variant);
    }
  };

  explicit Facets(ToyObject& toy)
      : dispatch(toy),
        baseObject(toy),
        extension(toy),
        expander(toy),
        categories(toy),
        browsing(toy),
        display(toy),
        hatch(toy) {}

  Dispatch dispatch;
  BaseObject baseObject;
  Extension extension;
  Expander expander;
  Categories categories;
  Browsing browsing;
  Display display;
  Hatch hatch;
};

ToyObject::ToyObject(ToyHost& host, std::string name)
    : Toy(host, name), type(host, name + ".type"), facets_(std::make_unique<Facets>(*this)) {}

ToyObject::~ToyObject() = default;

ToyProperty& ToyObject::property(DISPID dispId, std::wstring propertyName) {
  addFunction(dispId, propertyName, INVOKE_PROPERTYGET);
  addFunction(dispId, propertyName, INVOKE_PROPERTYPUT);
  return propertyOf(dispId, propertyName);
}

ToyProperty& ToyObject::readOnly(DISPID dispId, std::wstring propertyName) {
  addFunction(dispId, propertyName, INVOKE_PROPERTYGET);
  return propertyOf(dispId, propertyName);
}

ToyProperty& ToyObject::writeOnly(DISPID dispId, std::wstring propertyName) {
  addFunction(dispId, propertyName, INVOKE_PROPERTYPUT);
  return propertyOf(dispId, propertyName);
}

void ToyObject::method(DISPID dispId, std::wstring methodName) {
  addFunction(dispId, methodName, INVOKE_FUNC);
  dispIds[methodName] = dispId;
}

ToyProperty& ToyObject::propertyOf(DISPID dispId, const std::wstring& propertyName) {
  dispIds[propertyName] = dispId;
  ToyProperty& made = properties_[dispId];
  made.object = this;
  made.dispId = dispId;
  made.name = propertyName;
  made.inCategory(1, L"General");
  return made;
}

ToyProperty* ToyObject::find(DISPID dispId) {
  const auto found = properties_.find(dispId);
  return found == properties_.end() ? nullptr : &found->second;
}

void ToyObject::addFunction(DISPID dispId, const std::wstring& functionName, INVOKEKIND kind) {
  ToyFunction function;
  function.name = functionName;
  function.memid = dispId + memidOffset;
  function.kind = kind;
  function.returns = kind == INVOKE_PROPERTYGET ? VT_I4 : VT_VOID;
  type.functions.push_back(function);
}

namespace {

void forEachFunctionOf(const ToyProperty& property, const std::function<void(ToyFunction&)>& change) {
  for (ToyFunction& function : property.object->type.functions) {
    if (function.memid == property.dispId + memidOffset) change(function);
  }
}

}  // namespace

ToyProperty& ToyProperty::returns(VARTYPE type) {
  forEachFunctionOf(*this, [type](ToyFunction& function) {
    if (function.kind == INVOKE_PROPERTYGET) function.returns = type;
  });
  return *this;
}

ToyProperty& ToyProperty::returns(ToyTypeInfo& userType) {
  forEachFunctionOf(*this, [&userType](ToyFunction& function) {
    if (function.kind != INVOKE_PROPERTYGET) return;
    function.returns = VT_USERDEFINED;
    function.type = &userType;
  });
  return *this;
}

ToyProperty& ToyProperty::flagged(WORD flags) {
  forEachFunctionOf(*this, [flags](ToyFunction& function) { function.flags = flags; });
  return *this;
}

ToyProperty& ToyProperty::documented(std::wstring text) {
  forEachFunctionOf(*this, [&text](ToyFunction& function) { function.documentation = text; });
  return *this;
}

ToyProperty& ToyProperty::holds(ToyValue content) {
  value = std::move(content);
  return *this;
}

ToyProperty& ToyProperty::labelled(std::wstring text) {
  label = std::move(text);
  return *this;
}

ToyProperty& ToyProperty::shown(BOOL flag) {
  show = flag;
  return *this;
}

ToyProperty& ToyProperty::editable(BOOL flag) {
  edit = flag;
  return *this;
}

ToyProperty& ToyProperty::inCategory(PROPCAT number) {
  category = number;
  return *this;
}

ToyProperty& ToyProperty::inCategory(PROPCAT number, std::wstring categoryName) {
  object->categories[number] = std::move(categoryName);
  return inCategory(number);
}

ToyProperty& ToyProperty::weighs(long weight) {
  displayWeight = weight;
  return *this;
}

ToyProperty& ToyProperty::raises(ToyException texts) {
  exception = std::move(texts);
  return *this;
}

ToyProperty& ToyProperty::choice(std::wstring choiceName, ToyValue content, HRESULT result) {
  offersChoices = true;
  choices.push_back({std::move(choiceName), std::move(content), result});
  return *this;
}

ToyProperty& ToyProperty::noChoices() {
  offersChoices = true;
  choices.clear();
  return *this;
}

ToyProperty& ToyProperty::element(DWORD cookie, std::wstring elementName, ToyValue content) {
  expands = true;
  elements.push_back({cookie, std::move(elementName), std::move(content)});
  return *this;
}

ToyProperty& ToyProperty::noElements() {
  expands = true;
  elements.clear();
  return *this;
}

ToyProperty& ToyProperty::grouped(SHORT number, std::optional<long> groupCount) {
  grouping = number;
  groups = groupCount;
  return *this;
}

}  // namespace velt::toys
