#include "recorder/Interfaces.h"

#include <array>
#include <unordered_map>

#include "host/automation/IVeltBaseObject.h"
#include "host/automation/IVeltHatch.h"
#include "host/automation/IVeltHyperlinks.h"
#include "host/automation/IVeltVkCmColor.h"
#include "host/automation/IVkPiPropertyDisplay.h"
#include "host/automation/IdValues.h"
#include "host/com/IPerPropertyBrowsing.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IDynamicEnumProperty.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "host/palette/IOPMPropertyExtension.h"
#include "host/palette/IPropertySource.h"
#include "recorder/Call.h"

namespace velt::recorder {

namespace {

// All of ours, and what each stands for; null in a replay.
std::unordered_map<const IUnknown*, IUnknown*>& ours() {
  static auto& all = *new std::unordered_map<const IUnknown*, IUnknown*>;
  return all;
}

bool isOurs(const IUnknown* object) {
  return ours().contains(object);
}

// The interface `iid` of what was answered to a query, as one of ours. An interface that the layer does not know goes past.
void wrapQueried(const GUID& iid, void** object);
// Replaying: an object with this number and this interface.
void* queriedFrom(const GUID& iid, const json& number);

// --- what all of ours do -----------------------------------------------------------------------------------------------

template <class I>
class Root : public I {
 public:
  Root(const char* interfaceName, I* itsReal, std::uint64_t itsNumber)
      : real(itsReal), name(interfaceName), number(itsNumber) {}

  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (side() != Side::layer) {
      if (real == nullptr) return E_NOINTERFACE;
      const HRESULT result = real->QueryInterface(iid, object);
      if (SUCCEEDED(result) && side() == Side::outside) wrapQueried(iid, object);
      return result;
    }
    return call<HRESULT>(
        "QueryInterface", [&] { return real->QueryInterface(iid, object); }, In("iid", iid),
        Special(
            "object",
            [&](bool hasSucceeded) {
              if (!hasSucceeded) return json();
              wrapQueried(iid, object);
              return json(numberOf(*object));
            },
            [&](const json& from) { *object = queriedFrom(iid, from); }));
  }
  ULONG AddRef() override { return count("AddRef", &IUnknown::AddRef); }
  ULONG Release() override { return count("Release", &IUnknown::Release); }

 protected:
  // As the layer's call, or past the session.
  template <class Result, class Work, class... Parts>
  Result call(const char* method, Work&& work, Parts... parts) {
    if (side() != Side::layer) return pass<Result>(std::forward<Work>(work));
    return perform<Result>(std::string(name) + "::" + method, number, std::forward<Work>(work),
                           std::move(parts)...);
  }
  // What the layer does not call: handed on, and in a replay not offered.
  template <class Result, class Work>
  Result pass(Work&& work) {
    if (real != nullptr) return work();
    if constexpr (std::is_same_v<Result, HRESULT>) return E_NOTIMPL;
    if constexpr (!std::is_void_v<Result>) return Result();
  }
  template <class Work>
  HRESULT uncalled(Work&& work) {
    return pass<HRESULT>(std::forward<Work>(work));
  }

  I* const real;

 private:
  // The count is for diagnosis, and differs from run to run.
  ULONG count(const char* method, ULONG (IUnknown::*counting)()) {
    ULONG references = 1;
    const auto work = [&] { references = (real->*counting)(); };
    if (side() != Side::layer)
      pass<void>(work);
    else
      perform<void>(std::string("IUnknown::") + method, number, work);
    return references;
  }

  const char* const name;
  const std::uint64_t number;
};

// One of ours for each interface; below.
template <class I>
class Ours;

// The four methods of IDispatch, which several interfaces begin with.
template <class I>
class DispatchRoot : public Root<I> {
 public:
  using Root<I>::Root;

  HRESULT GetTypeInfoCount(UINT* count) override {
    return this->uncalled([&] { return this->real->GetTypeInfoCount(count); });
  }
  HRESULT GetTypeInfo(UINT index, LCID locale, ITypeInfo** typeInfo) override {
    return this->template call<HRESULT>(
        "GetTypeInfo", [&] { return this->real->GetTypeInfo(index, locale, typeInfo); }, In("index", index),
        In("locale", locale), Out("typeInfo", typeInfo));
  }
  HRESULT GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* dispIds) override {
    json written = json::array();
    for (UINT i = 0; i < count; ++i)
      written.push_back(textJson(names[i]));
    return this->template call<HRESULT>(
        "GetIDsOfNames", [&] { return this->real->GetIDsOfNames(iid, names, count, locale, dispIds); },
        In("names", written), In("locale", locale), Out("dispId", dispIds));
  }
  HRESULT Invoke(DISPID dispId, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params, VARIANT* result,
                 EXCEPINFO* exception, UINT* argumentError) override {
    json arguments = json::array();
    json names = json::array();
    std::vector<VARIANT> passed;
    DISPPARAMS handedOn{};
    if (params != nullptr) {
      for (UINT i = 0; i < params->cArgs; ++i) {
        arguments.push_back(valueJson(params->rgvarg[i]));
        passed.push_back(forHost(params->rgvarg[i]));
      }
      for (UINT i = 0; i < params->cNamedArgs; ++i)
        names.push_back(params->rgdispidNamedArgs[i]);
      handedOn = *params;
      handedOn.rgvarg = passed.data();
    }
    const auto answered = this->template call<HRESULT>(
        "Invoke",
        [&] {
          return this->real->Invoke(dispId, iid, locale, flags, params != nullptr ? &handedOn : nullptr,
                                    result, exception, argumentError);
        },
        In("dispId", dispId), In("locale", locale), In("flags", flags), In("arguments", arguments),
        In("names", names), Out("result", result, Taken::always),
        // For whoever reads the recording: the layer takes nothing of it.
        Special(
            "exception",
            [&](bool hasSucceeded) {
              return hasSucceeded || exception == nullptr ? json() : stringJson(exception->bstrDescription);
            },
            [](const json&) {}));
    if (SUCCEEDED(answered)) aValueWasRead() = true;
    return answered;
  }
};

// --- the interfaces ---------------------------------------------------------------------------------------------------

template <>
class Ours<IUnknown> final : public Root<IUnknown> {
 public:
  using Root::Root;
  static constexpr const char* interfaceName = "IUnknown";
};

template <>
class Ours<IDispatch> final : public DispatchRoot<IDispatch> {
 public:
  using DispatchRoot::DispatchRoot;
  static constexpr const char* interfaceName = "IDispatch";
};

template <>
class Ours<IVeltBaseObject> final : public Root<IVeltBaseObject> {
 public:
  using Root::Root;
  static constexpr const char* interfaceName = "IVeltBaseObject";

  HRESULT SetObjectId(VkDbObjectId& object, VkDbObjectId owner, wchar_t* keyword) override {
    return call<HRESULT>(
        "SetObjectId", [&] { return real->SetObjectId(object, owner, keyword); }, In("object", object));
  }
  HRESULT GetObjectId(VkDbObjectId* object) override {
    return call<HRESULT>(
        "GetObjectId", [&] { return real->GetObjectId(object); }, Out("object", object, Taken::always));
  }
};

template <>
class Ours<IOPMPropertyExtension> final : public Root<IOPMPropertyExtension> {
 public:
  using Root::Root;
  static constexpr const char* interfaceName = "IOPMPropertyExtension";

  HRESULT GetDisplayName(DISPID dispId, BSTR* label) override {
    return call<HRESULT>(
        "GetDisplayName", [&] { return real->GetDisplayName(dispId, label); }, In("dispId", dispId),
        Out("name", label, Taken::always));
  }
  HRESULT Editable(DISPID dispId, BOOL* editable) override {
    return call<HRESULT>(
        "Editable", [&] { return real->Editable(dispId, editable); }, In("dispId", dispId),
        Out("editable", editable, Taken::always));
  }
  HRESULT ShowProperty(DISPID dispId, BOOL* show) override {
    return call<HRESULT>(
        "ShowProperty", [&] { return real->ShowProperty(dispId, show); }, In("dispId", dispId),
        Out("show", show, Taken::always));
  }
};

template <>
class Ours<ICategorizeProperties> final : public Root<ICategorizeProperties> {
 public:
  using Root::Root;
  static constexpr const char* interfaceName = "ICategorizeProperties";

  // Of dynamic properties the layer takes the outputs whatever the results are.
  HRESULT MapPropertyToCategory(DISPID dispId, PROPCAT* category) override {
    return call<HRESULT>(
        "MapPropertyToCategory", [&] { return real->MapPropertyToCategory(dispId, category); },
        In("dispId", dispId), Out("category", category, Taken::always));
  }
  HRESULT GetCategoryName(PROPCAT category, LCID locale, BSTR* itsName) override {
    return call<HRESULT>(
        "GetCategoryName", [&] { return real->GetCategoryName(category, locale, itsName); },
        In("category", category), In("locale", locale), Out("name", itsName, Taken::always));
  }
};

template <>
class Ours<IOPMPropertyExpander> final : public Root<IOPMPropertyExpander> {
 public:
  using Root::Root;
  static constexpr const char* interfaceName = "IOPMPropertyExpander";

  HRESULT GetElementValue(DISPID dispId, DWORD cookie, VARIANT* value) override {
    return call<HRESULT>(
        "GetElementValue", [&] { return real->GetElementValue(dispId, cookie, value); }, In("dispId", dispId),
        In("cookie", cookie), Out("value", value));
  }
  HRESULT SetElementValue(DISPID dispId, DWORD cookie, VARIANT value) override {
    return call<HRESULT>(
        "SetElementValue", [&] { return real->SetElementValue(dispId, cookie, forHost(value)); },
        In("dispId", dispId), In("cookie", cookie), In("value", value));
  }
  HRESULT GetElementStrings(DISPID dispId, CALPOLESTR* strings, CADWORD* cookies) override {
    return call<HRESULT>(
        "GetElementStrings", [&] { return real->GetElementStrings(dispId, strings, cookies); },
        In("dispId", dispId), Out("strings", strings), Out("cookies", cookies));
  }
  HRESULT GetElementGrouping(DISPID dispId, SHORT* grouping) override {
    return call<HRESULT>(
        "GetElementGrouping", [&] { return real->GetElementGrouping(dispId, grouping); },
        In("dispId", dispId), Out("grouping", grouping, Taken::always));
  }
  HRESULT GetGroupCount(DISPID dispId, long* groups) override {
    return call<HRESULT>(
        "GetGroupCount", [&] { return real->GetGroupCount(dispId, groups); }, In("dispId", dispId),
        Out("groups", groups, Taken::always));
  }
};

template <>
class Ours<IPerPropertyBrowsing> final : public Root<IPerPropertyBrowsing> {
 public:
  using Root::Root;
  static constexpr const char* interfaceName = "IPerPropertyBrowsing";

  HRESULT GetDisplayString(DISPID dispId, BSTR* text) override {
    return uncalled([&] { return real->GetDisplayString(dispId, text); });
  }
  HRESULT MapPropertyToPage(DISPID dispId, CLSID* page) override {
    return uncalled([&] { return real->MapPropertyToPage(dispId, page); });
  }
  HRESULT GetPredefinedStrings(DISPID dispId, CALPOLESTR* strings, CADWORD* cookies) override {
    return call<HRESULT>(
        "GetPredefinedStrings", [&] { return real->GetPredefinedStrings(dispId, strings, cookies); },
        In("dispId", dispId), Out("strings", strings), Out("cookies", cookies));
  }
  HRESULT GetPredefinedValue(DISPID dispId, DWORD cookie, VARIANT* value) override {
    return call<HRESULT>(
        "GetPredefinedValue", [&] { return real->GetPredefinedValue(dispId, cookie, value); },
        In("dispId", dispId), In("cookie", cookie), Out("value", value));
  }
};

template <>
class Ours<IVkPiPropertyDisplay> final : public Root<IVkPiPropertyDisplay> {
 public:
  using Root::Root;
  static constexpr const char* interfaceName = "IVkPiPropertyDisplay";

  HRESULT GetCustomPropertyCtrl(VARIANT property, LCID locale, BSTR* control) override {
    return uncalled([&] { return real->GetCustomPropertyCtrl(property, locale, control); });
  }
  HRESULT GetPropertyColor(VARIANT property, ULONG* color) override {
    return uncalled([&] { return real->GetPropertyColor(property, color); });
  }
  HRESULT GetPropertyTextColor(VARIANT property, ULONG* color) override {
    return uncalled([&] { return real->GetPropertyTextColor(property, color); });
  }
  HRESULT IsFullView(VARIANT property, BOOL* full) override {
    return uncalled([&] { return real->IsFullView(property, full); });
  }
  HRESULT GetPropertyWeight(VARIANT property, long* weight) override {
    return call<HRESULT>(
        "GetPropertyWeight", [&] { return real->GetPropertyWeight(property, weight); },
        In("property", property), Out("weight", weight));
  }
};

template <>
class Ours<IVeltHatch> final : public DispatchRoot<IVeltHatch> {
 public:
  using DispatchRoot::DispatchRoot;
  static constexpr const char* interfaceName = "IVeltHatch";

#define VELT_HOST_SLOT(slot)                                 \
  HRESULT hostSlot##slot() override {                        \
    return uncalled([&] { return real->hostSlot##slot(); }); \
  }
  VELT_HATCH_HOST_SLOTS(VELT_HOST_SLOT)
#undef VELT_HOST_SLOT
  HRESULT get_PropertyVariant(INT* variant) override {
    return call<HRESULT>(
        "get_PropertyVariant", [&] { return real->get_PropertyVariant(variant); },
        Out("variant", variant, Taken::always));
  }
};

template <>
class Ours<IVeltHyperlink> final : public DispatchRoot<IVeltHyperlink> {
 public:
  using DispatchRoot::DispatchRoot;
  static constexpr const char* interfaceName = "IVeltHyperlink";

  HRESULT put_URL(BSTR url) override {
    return uncalled([&] { return real->put_URL(url); });
  }
  HRESULT get_URL(BSTR* url) override {
    return call<HRESULT>(
        "get_URL", [&] { return real->get_URL(url); }, Out("url", url, Taken::always));
  }
  HRESULT put_URLDescription(BSTR description) override {
    return uncalled([&] { return real->put_URLDescription(description); });
  }
  HRESULT get_URLDescription(BSTR* description) override {
    return uncalled([&] { return real->get_URLDescription(description); });
  }
};

template <>
class Ours<IVeltHyperlinks> final : public DispatchRoot<IVeltHyperlinks> {
 public:
  using DispatchRoot::DispatchRoot;
  static constexpr const char* interfaceName = "IVeltHyperlinks";

  HRESULT Item(LONG index, IVeltHyperlink** hyperlink) override {
    return call<HRESULT>(
        "Item", [&] { return real->Item(index, hyperlink); }, In("index", index),
        Out("hyperlink", hyperlink));
  }
  HRESULT get_Count(LONG* count) override {
    return uncalled([&] { return real->get_Count(count); });
  }
};

template <>
class Ours<IVeltVkCmColor> final : public DispatchRoot<IVeltVkCmColor> {
 public:
  using DispatchRoot::DispatchRoot;
  static constexpr const char* interfaceName = "IVeltVkCmColor";

  HRESULT put_EntityColor(LONG value) override {
    return uncalled([&] { return real->put_EntityColor(value); });
  }
  HRESULT get_EntityColor(LONG* value) override {
    return call<HRESULT>(
        "get_EntityColor", [&] { return real->get_EntityColor(value); }, Out("value", value, Taken::always));
  }
  HRESULT get_ColorName(BSTR* itsName) override {
    return call<HRESULT>(
        "get_ColorName", [&] { return real->get_ColorName(itsName); }, Out("name", itsName, Taken::always));
  }
  HRESULT get_BookName(BSTR* itsName) override {
    return call<HRESULT>(
        "get_BookName", [&] { return real->get_BookName(itsName); }, Out("name", itsName, Taken::always));
  }
  HRESULT SetNames(BSTR colorName, BSTR bookName) override {
    return uncalled([&] { return real->SetNames(colorName, bookName); });
  }
};

template <>
class Ours<IPropertySource> final : public Root<IPropertySource> {
 public:
  using Root::Root;
  static constexpr const char* interfaceName = "IPropertySource";

  HRESULT GetProperties(IDispatch* entity, VARIANT* properties) override {
    return call<HRESULT>(
        "GetProperties", [&] { return real->GetProperties(unwrap(entity), properties); },
        In("entity", entity), Out("properties", properties));
  }
};

// Both generations of dynamic properties: an entity is named by its id, or by its object.
inline long named(long oldId) {
  return oldId;
}
inline IDispatch* named(IDispatch* entity) {
  return unwrap(entity);
}

template <class I, class Entity>
class DynamicRoot : public Root<I> {
 public:
  using Root<I>::Root;

  HRESULT GetGUID(GUID* guid) override {
    return this->template call<HRESULT>(
        "GetGUID", [&] { return this->real->GetGUID(guid); }, Out("guid", guid, Taken::always));
  }
  HRESULT GetDisplayName(BSTR* itsName) override {
    return this->template call<HRESULT>(
        "GetDisplayName", [&] { return this->real->GetDisplayName(itsName); },
        Out("name", itsName, Taken::always));
  }
  HRESULT IsPropertyEnabled(Entity entity, BOOL* enabled) override {
    return this->template call<HRESULT>(
        "IsPropertyEnabled", [&] { return this->real->IsPropertyEnabled(named(entity), enabled); },
        In("entity", entity), Out("enabled", enabled, Taken::always));
  }
  HRESULT IsPropertyReadOnly(BOOL* readOnly) override {
    return this->template call<HRESULT>(
        "IsPropertyReadOnly", [&] { return this->real->IsPropertyReadOnly(readOnly); },
        Out("readOnly", readOnly, Taken::always));
  }
  HRESULT GetDescription(BSTR* description) override {
    return this->template call<HRESULT>(
        "GetDescription", [&] { return this->real->GetDescription(description); },
        Out("description", description, Taken::always));
  }
  HRESULT GetCurrentValueName(BSTR* typeName) override {
    return this->template call<HRESULT>(
        "GetCurrentValueName", [&] { return this->real->GetCurrentValueName(typeName); },
        Out("typeName", typeName));
  }
  HRESULT GetCurrentValueType(VARTYPE* type) override {
    return this->template call<HRESULT>(
        "GetCurrentValueType", [&] { return this->real->GetCurrentValueType(type); },
        Out("type", type, Taken::always));
  }
  HRESULT GetCurrentValueData(Entity entity, VARIANT* value) override {
    return this->template call<HRESULT>(
        "GetCurrentValueData", [&] { return this->real->GetCurrentValueData(named(entity), value); },
        In("entity", entity), Out("value", value, Taken::always));
  }
  HRESULT SetCurrentValueData(Entity entity, VARIANT value) override {
    return this->template call<HRESULT>(
        "SetCurrentValueData", [&] { return this->real->SetCurrentValueData(named(entity), forHost(value)); },
        In("entity", entity), In("value", value));
  }
};

template <>
class Ours<IDynamicProperty> final : public DynamicRoot<IDynamicProperty, long> {
 public:
  using DynamicRoot::DynamicRoot;
  static constexpr const char* interfaceName = "IDynamicProperty";
};

template <>
class Ours<IDynamicProperty2> final : public DynamicRoot<IDynamicProperty2, IDispatch*> {
 public:
  using DynamicRoot::DynamicRoot;
  static constexpr const char* interfaceName = "IDynamicProperty2";
};

template <>
class Ours<IDynamicEnumProperty> final : public Root<IDynamicEnumProperty> {
 public:
  using Root::Root;
  static constexpr const char* interfaceName = "IDynamicEnumProperty";

  HRESULT GetNumPropertyValues(LONG* count) override {
    return call<HRESULT>(
        "GetNumPropertyValues", [&] { return real->GetNumPropertyValues(count); },
        Out("count", count, Taken::always));
  }
  HRESULT GetPropValueName(LONG index, BSTR* itsName) override {
    return call<HRESULT>(
        "GetPropValueName", [&] { return real->GetPropValueName(index, itsName); }, In("index", index),
        Out("name", itsName, Taken::always));
  }
  HRESULT GetPropValueData(LONG index, VARIANT* value) override {
    return call<HRESULT>(
        "GetPropValueData", [&] { return real->GetPropValueData(index, value); }, In("index", index),
        Out("value", value));
  }
};

// Blocks of type information are lent: a replay lends blocks of its own. Of each the layer reads what is kept here.
template <class Block>
auto lent(Block** block, json (*write)(const Block&), void (*read)(const json&, Block&)) {
  return Special(
      "block", [=](bool hasSucceeded) { return hasSucceeded && *block != nullptr ? write(**block) : json(); },
      [=](const json& from) {
        *block = new Block{};
        read(from, **block);
      });
}

json attributesJson(const TYPEATTR& attributes) {
  return {{"typekind", static_cast<int>(attributes.typekind)},
          {"cFuncs", attributes.cFuncs},
          {"cVars", attributes.cVars}};
}
void attributesFrom(const json& from, TYPEATTR& attributes) {
  fromJson(from.at("typekind"), attributes.typekind);
  fromJson(from.at("cFuncs"), attributes.cFuncs);
  fromJson(from.at("cVars"), attributes.cVars);
}

json functionJson(const FUNCDESC& function) {
  json written{{"memid", function.memid},
               {"invkind", static_cast<int>(function.invkind)},
               {"wFuncFlags", function.wFuncFlags},
               {"vt", function.elemdescFunc.tdesc.vt}};
  if (function.elemdescFunc.tdesc.vt == VT_USERDEFINED)
    written["hreftype"] = function.elemdescFunc.tdesc.hreftype;
  return written;
}
void functionFrom(const json& from, FUNCDESC& function) {
  fromJson(from.at("memid"), function.memid);
  fromJson(from.at("invkind"), function.invkind);
  fromJson(from.at("wFuncFlags"), function.wFuncFlags);
  fromJson(from.at("vt"), function.elemdescFunc.tdesc.vt);
  function.elemdescFunc.tdesc.hreftype = from.value("hreftype", HREFTYPE{0});
}

json variableJson(const VARDESC& variable) {
  json written{{"memid", variable.memid}, {"varkind", static_cast<int>(variable.varkind)}};
  if (variable.varkind == VAR_CONST && variable.lpvarValue != nullptr)
    written["lVal"] = variable.lpvarValue->lVal;
  return written;
}
void variableFrom(const json& from, VARDESC& variable) {
  fromJson(from.at("memid"), variable.memid);
  fromJson(from.at("varkind"), variable.varkind);
  variable.lpvarValue = nullptr;
  if (!from.contains("lVal")) return;
  variable.lpvarValue = new VARIANT{};
  variable.lpvarValue->vt = VT_I4;
  fromJson(from.at("lVal"), variable.lpvarValue->lVal);
}

template <>
class Ours<ITypeInfo> final : public Root<ITypeInfo> {
 public:
  using Root::Root;
  static constexpr const char* interfaceName = "ITypeInfo";

  HRESULT GetTypeAttr(TYPEATTR** attributes) override {
    return call<HRESULT>(
        "GetTypeAttr", [&] { return real->GetTypeAttr(attributes); },
        lent(attributes, &attributesJson, &attributesFrom));
  }
  HRESULT GetTypeComp(ITypeComp** comp) override {
    return uncalled([&] { return real->GetTypeComp(comp); });
  }
  HRESULT GetFuncDesc(UINT index, FUNCDESC** function) override {
    return call<HRESULT>(
        "GetFuncDesc", [&] { return real->GetFuncDesc(index, function); }, In("index", index),
        lent(function, &functionJson, &functionFrom));
  }
  HRESULT GetVarDesc(UINT index, VARDESC** variable) override {
    return call<HRESULT>(
        "GetVarDesc", [&] { return real->GetVarDesc(index, variable); }, In("index", index),
        lent(variable, &variableJson, &variableFrom));
  }
  HRESULT GetNames(MEMBERID member, BSTR* names, UINT maxNames, UINT* nameCount) override {
    return call<HRESULT>(
        "GetNames", [&] { return real->GetNames(member, names, maxNames, nameCount); }, In("member", member),
        In("maxNames", maxNames),
        // The layer asks for one.
        Out("name", names, Taken::always), Out("nameCount", nameCount, Taken::always));
  }
  HRESULT GetRefTypeOfImplType(UINT index, HREFTYPE* refType) override {
    return uncalled([&] { return real->GetRefTypeOfImplType(index, refType); });
  }
  HRESULT GetImplTypeFlags(UINT index, INT* flags) override {
    return uncalled([&] { return real->GetImplTypeFlags(index, flags); });
  }
  HRESULT GetIDsOfNames(LPOLESTR* names, UINT count, MEMBERID* members) override {
    return uncalled([&] { return real->GetIDsOfNames(names, count, members); });
  }
  HRESULT Invoke(void* instance, MEMBERID member, WORD flags, DISPPARAMS* params, VARIANT* result,
                 EXCEPINFO* exception, UINT* argumentError) override {
    return uncalled(
        [&] { return real->Invoke(instance, member, flags, params, result, exception, argumentError); });
  }
  HRESULT GetDocumentation(MEMBERID member, BSTR* itsName, BSTR* documentation, DWORD* helpContext,
                           BSTR* helpFile) override {
    return call<HRESULT>(
        "GetDocumentation",
        [&] { return real->GetDocumentation(member, itsName, documentation, helpContext, helpFile); },
        In("member", member), Out("name", itsName), Out("documentation", documentation));
  }
  HRESULT GetDllEntry(MEMBERID member, INVOKEKIND kind, BSTR* dll, BSTR* itsName, WORD* ordinal) override {
    return uncalled([&] { return real->GetDllEntry(member, kind, dll, itsName, ordinal); });
  }
  HRESULT GetRefTypeInfo(HREFTYPE refType, ITypeInfo** typeInfo) override {
    return call<HRESULT>(
        "GetRefTypeInfo", [&] { return real->GetRefTypeInfo(refType, typeInfo); }, In("refType", refType),
        Out("typeInfo", typeInfo, Taken::always));
  }
  HRESULT AddressOfMember(MEMBERID member, INVOKEKIND kind, void** address) override {
    return uncalled([&] { return real->AddressOfMember(member, kind, address); });
  }
  HRESULT CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    return uncalled([&] { return real->CreateInstance(outer, iid, object); });
  }
  HRESULT GetMops(MEMBERID member, BSTR* mops) override {
    return uncalled([&] { return real->GetMops(member, mops); });
  }
  HRESULT GetContainingTypeLib(ITypeLib** library, UINT* index) override {
    return call<HRESULT>(
        "GetContainingTypeLib", [&] { return real->GetContainingTypeLib(library, index); },
        Out("library", library), Out("index", index));
  }
  void ReleaseTypeAttr(TYPEATTR* attributes) override {
    if (session().isReplay()) delete attributes;
    call<void>("ReleaseTypeAttr", [&] { real->ReleaseTypeAttr(attributes); });
  }
  void ReleaseFuncDesc(FUNCDESC* function) override {
    if (session().isReplay()) delete function;
    call<void>("ReleaseFuncDesc", [&] { real->ReleaseFuncDesc(function); });
  }
  void ReleaseVarDesc(VARDESC* variable) override {
    if (session().isReplay() && variable != nullptr) {
      delete variable->lpvarValue;
      delete variable;
    }
    call<void>("ReleaseVarDesc", [&] { real->ReleaseVarDesc(variable); });
  }
};

template <>
class Ours<ITypeLib> final : public Root<ITypeLib> {
 public:
  using Root::Root;
  static constexpr const char* interfaceName = "ITypeLib";

  UINT GetTypeInfoCount() override {
    return pass<UINT>([&] { return real->GetTypeInfoCount(); });
  }
  HRESULT GetTypeInfo(UINT index, ITypeInfo** typeInfo) override {
    return uncalled([&] { return real->GetTypeInfo(index, typeInfo); });
  }
  HRESULT GetTypeInfoType(UINT index, TYPEKIND* kind) override {
    return uncalled([&] { return real->GetTypeInfoType(index, kind); });
  }
  HRESULT GetTypeInfoOfGuid(REFGUID guid, ITypeInfo** typeInfo) override {
    return uncalled([&] { return real->GetTypeInfoOfGuid(guid, typeInfo); });
  }
  HRESULT GetLibAttr(TLIBATTR** attributes) override {
    return uncalled([&] { return real->GetLibAttr(attributes); });
  }
  HRESULT GetTypeComp(ITypeComp** comp) override {
    return uncalled([&] { return real->GetTypeComp(comp); });
  }
  HRESULT GetDocumentation(INT index, BSTR* itsName, BSTR* documentation, DWORD* helpContext,
                           BSTR* helpFile) override {
    return call<HRESULT>(
        "GetDocumentation",
        [&] { return real->GetDocumentation(index, itsName, documentation, helpContext, helpFile); },
        In("index", index), Out("name", itsName), Out("documentation", documentation));
  }
  HRESULT IsName(LPOLESTR text, ULONG hash, BOOL* isName) override {
    return uncalled([&] { return real->IsName(text, hash, isName); });
  }
  HRESULT FindName(LPOLESTR text, ULONG hash, ITypeInfo** typeInfos, MEMBERID* members,
                   USHORT* found) override {
    return uncalled([&] { return real->FindName(text, hash, typeInfos, members, found); });
  }
  void ReleaseTLibAttr(TLIBATTR* attributes) override {
    pass<void>([&] { real->ReleaseTLibAttr(attributes); });
  }
};

// --- by interface id ----------------------------------------------------------------------------------------------------

struct Kind {
  GUID iid;
  void* (*wrap)(void*);
  void* (*make)(const json&);
};

template <class I>
Kind kindOf(const GUID& iid) {
  return {iid, [](void* object) -> void* { return velt::recorder::wrap(static_cast<I*>(object)); },
          [](const json& number) -> void* { return objectFrom<I>(number); }};
}

const Kind* kindOf(const GUID& iid) {
  static const std::array kinds = {
      kindOf<IUnknown>(IID_IUnknown),
      kindOf<IDispatch>(IID_IDispatch),
      kindOf<ITypeInfo>(IID_ITypeInfo),
      kindOf<ITypeLib>(IID_ITypeLib),
      kindOf<IPerPropertyBrowsing>(IID_IPerPropertyBrowsing),
      kindOf<ICategorizeProperties>(IID_ICategorizeProperties),
      kindOf<IDynamicEnumProperty>(IID_IDynamicEnumProperty),
      kindOf<IDynamicProperty>(IID_IDynamicProperty),
      kindOf<IDynamicProperty2>(IID_IDynamicProperty2),
      kindOf<IOPMPropertyExpander>(IID_IOPMPropertyExpander),
      kindOf<IOPMPropertyExtension>(IID_IOPMPropertyExtension),
      kindOf<IPropertySource>(IID_IPropertySource),
      kindOf<IVeltBaseObject>(velt::IID_IVeltBaseObject),
      kindOf<IVeltHatch>(velt::IID_IVeltHatch),
      kindOf<IVeltHyperlinks>(velt::IID_IVeltHyperlinks),
      kindOf<IVeltHyperlink>(velt::IID_IVeltHyperlink),
      kindOf<IVeltVkCmColor>(velt::IID_IVeltVkCmColor),
      kindOf<IVkPiPropertyDisplay>(velt::IID_IVkPiPropertyDisplay),
  };
  for (const Kind& kind : kinds) {
    if (kind.iid == iid) return &kind;
  }
  return nullptr;
}

void wrapQueried(const GUID& iid, void** object) {
  const Kind* const kind = kindOf(iid);
  if (kind != nullptr) *object = kind->wrap(*object);
}

void* queriedFrom(const GUID& iid, const json& number) {
  const Kind* const kind = kindOf(iid);
  if (kind == nullptr) throw std::runtime_error("an interface that nobody knows is answered");
  return kind->make(number);
}

template <class I>
Ours<I>* made(I* real, std::uint64_t number) {
  auto* const one = new Ours<I>(Ours<I>::interfaceName, real, number);
  ours().emplace(one, real);
  return one;
}

}  // namespace

template <class I>
I* wrap(I* object) {
  static auto& all = *new std::unordered_map<I*, Ours<I>*>;
  if (object == nullptr || isOurs(object)) return object;
  Ours<I>*& one = all[object];
  if (one == nullptr) {
    // Its number is that of our pointer, by which the layer names it.
    static_assert(sizeof(std::uint64_t) == sizeof(void*));
    const std::uint64_t number = numberOf(object);
    one = made(object, number);
    setNumber(one, number);
  }
  return one;
}

template <class I>
I* unwrap(I* object) {
  const auto found = ours().find(object);
  return found != ours().end() && found->second != nullptr ? static_cast<I*>(found->second) : object;
}

template <class I>
I* objectFrom(const json& from) {
  static auto& all = *new std::unordered_map<std::uint64_t, Ours<I>*>;
  const auto number = from.get<std::uint64_t>();
  if (number == 0) return nullptr;
  Ours<I>*& one = all[number];
  if (one == nullptr) {
    one = made<I>(nullptr, number);
    setNumber(one, number);
  }
  return one;
}

#define VELT_OF_OURS(I)      \
  template I* wrap<I>(I*);   \
  template I* unwrap<I>(I*); \
  template I* objectFrom<I>(const json&);
VELT_OF_OURS(IUnknown)
VELT_OF_OURS(IDispatch)
VELT_OF_OURS(ITypeInfo)
VELT_OF_OURS(ITypeLib)
VELT_OF_OURS(IVeltHyperlink)
VELT_OF_OURS(IPropertySource)
#undef VELT_OF_OURS

void wrapContent(VARIANT& value) {
  if (value.vt == VT_DISPATCH) {
    value.pdispVal = wrap(value.pdispVal);
  } else if (value.vt == VT_UNKNOWN) {
    value.punkVal = wrap(value.punkVal);
  } else if ((value.vt & VT_ARRAY) != 0 && (value.vt & VT_BYREF) == 0 && value.parray != nullptr) {
    const SAFEARRAY& array = *value.parray;
    const bool holdsObjects = (array.fFeatures & (FADF_UNKNOWN | FADF_DISPATCH)) != 0;
    if (!holdsObjects || array.cDims != 1 || array.pvData == nullptr) return;
    auto** const objects = static_cast<IUnknown**>(array.pvData);
    for (ULONG i = 0; i < array.rgsabound[0].cElements; ++i) {
      // An array of IDispatch is of IUnknown, too, and the layer asks the elements for what it needs.
      objects[i] = (array.fFeatures & FADF_DISPATCH) != 0 ? wrap(static_cast<IDispatch*>(objects[i]))
                                                          : wrap(objects[i]);
    }
  }
}

VARIANT forHost(const VARIANT& value) {
  VARIANT passed = value;
  if (value.vt == VT_DISPATCH) passed.pdispVal = unwrap(value.pdispVal);
  if (value.vt == VT_UNKNOWN) passed.punkVal = unwrap(value.punkVal);
  return passed;
}

}  // namespace velt::recorder
