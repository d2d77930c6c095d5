// The walk through the type information of an object, as the layer makes it.

#include <algorithm>
#include <optional>
#include <set>
#include <string>

#include "holders/InterfaceHolder.h"
#include "holders/StringHolder.h"
#include "holders/TypeInfoBlockHolder.h"
#include "host/com/ComRuntime.h"
#include "host/com/TypeInfo.h"
#include "hostcheck/Checks.h"
#include "hostcheck/TypeNames.h"

using namespace velt::holders;

namespace velt::hostcheck {

namespace {

constexpr UINT baseMethods = 7;
constexpr DISPID ofPlugIns = -23;

struct Function {
  MEMBERID memberId;
  INVOKEKIND kind;
  WORD flags;
  VARTYPE type;
  // Means something for VT_USERDEFINED only.
  HREFTYPE userType;
};

std::string place(UINT index) {
  return "function " + std::to_string(index);
}

bool describe(Findings& findings, ITypeInfo& type, UINT index, Function& function) {
  FunctionDescriptionHolder description(type);
  const HRESULT result =
      findings.call("GetFuncDesc", [&] { return type.GetFuncDesc(index, description.put()); });
  if (!handedOver(result, description) || !description) return false;
  const TYPEDESC& returned = description->elemdescFunc.tdesc;
  function = {description->memid, description->invkind, description->wFuncFlags, returned.vt,
              returned.vt == VT_USERDEFINED ? returned.hreftype : 0};
  return true;
}

bool isProperty(const Function& function) {
  return function.kind == INVOKE_PROPERTYGET || function.kind == INVOKE_PROPERTYPUT;
}

// Properties in the places of the methods of IUnknown and IDispatch are never read.
void checkBaseMethods(Findings& findings, ITypeInfo& type, UINT functions) {
  for (UINT index = 0; index < baseMethods && index < functions; ++index) {
    Function function{};
    findings.tries("base-methods");
    // Most hosts describe the base methods, some do not; the layer never asks.
    if (!describe(findings, type, index, function)) continue;
    findings.expect(!isProperty(function), "base-methods",
                    "a method of IUnknown or IDispatch as " + place(index), "a property");
  }
}

HRESULT resolve(Findings& findings, IDispatch& object, const wchar_t* name, DISPID& dispId) {
  std::wstring text = name;
  LPOLESTR names = text.data();
  return findings.call("GetIDsOfNames", [&] {
    return object.GetIDsOfNames(GUID_NULL, &names, 1, LOCALE_SYSTEM_DEFAULT, &dispId);
  });
}

void checkUnknownName(Findings& findings, IDispatch& object) {
  constexpr DISPID untouched = 0x5A5A5A5A;
  DISPID dispId = untouched;
  const HRESULT result = resolve(findings, object, L"NobodysNameOfAProperty", dispId);
  findings.expect(FAILED(result), "name-unknown",
                  "GetIDsOfNames fails for a name that the object does not have", hex(result));
}

// What a user-defined type is to the layer: an enumeration, or a type that goes by the name that its library has for it.
struct UserType {
  bool isEnumeration = false;
  std::wstring name;
};

// Answers nothing, and says in `reason` which call has failed, where there is no telling.
std::optional<UserType> resolveType(Findings& findings, ITypeInfo& typeInfo, HREFTYPE reference,
                                    std::string& reason) {
  InterfaceHolder<ITypeInfo> referenced;
  // As in the layer, the pointer alone counts.
  findings.call("GetRefTypeInfo", [&] { return typeInfo.GetRefTypeInfo(reference, referenced.put()); });
  reason = "GetRefTypeInfo answers none";
  if (!referenced) return std::nullopt;
  TypeAttributesHolder attributes(*referenced.get());
  const HRESULT read =
      findings.call("GetTypeAttr", [&] { return referenced->GetTypeAttr(attributes.put()); });
  reason = "GetTypeAttr of the type fails";
  if (!handedOver(read, attributes) || !attributes) return std::nullopt;
  if (attributes->typekind == TKIND_ENUM) return UserType{true, {}};

  InterfaceHolder<ITypeLib> library;
  UINT index = 0;
  const HRESULT contained = findings.call(
      "GetContainingTypeLib", [&] { return referenced->GetContainingTypeLib(library.put(), &index); });
  reason = "GetContainingTypeLib of the type fails";
  if (!handedOver(contained, library) || !library) return std::nullopt;
  StringHolder name;
  StringHolder documentation;
  StringHolder helpFile;
  DWORD helpContext = 0;
  const HRESULT documented = findings.call("GetDocumentation", [&] {
    return library->GetDocumentation(static_cast<INT>(index), name.put(), documentation.put(), &helpContext,
                                     helpFile.put());
  });
  reason = "GetDocumentation of the type's library fails";
  if (!handedOver(documented, name, documentation, helpFile) || !name) return std::nullopt;
  return UserType{false, name.get()};
}

// By the name of its type a row is a length or a layer. A name that nobody knows is no failure, so nobody is told of it.
void checkTypeName(Findings& findings, ITypeInfo& typeInfo, const Function& function,
                   const std::string& property) {
  if (function.type != VT_USERDEFINED) return;
  findings.tries("type-name");
  std::string came;
  const std::optional<UserType> type = resolveType(findings, typeInfo, function.userType, came);
  if (type) came = narrow(type->name.c_str());
  const bool isKnown = type
                       && (type->isEnumeration
                           || std::find(typeNames.begin(), typeNames.end(), type->name) != typeNames.end());
  findings.expect(isKnown, "type-name",
                  "the user-defined type of " + property
                      + " is an enumeration, or has a name that the layer knows, as VELT_DISTANCE",
                  came);
}

class Walk {
 public:
  Walk(Findings& findings, IDispatch& object, ITypeInfo& type)
      : findings_(findings), object_(object), type_(type) {}

  std::vector<Property> run(UINT functions) {
    for (UINT index = baseMethods; index < functions; ++index)
      visit(index);
    for (Property& property : properties_)
      property.isWritable = puts_.contains(property.name);
    return std::move(properties_);
  }

 private:
  void visit(UINT index) {
    Function function{};
    if (!findings_.expect(describe(findings_, type_, index, function), "function-described",
                          "GetFuncDesc describes " + place(index), "a failure or null"))
      return;
    StringHolder name;
    StringHolder help;
    const HRESULT documented = findings_.call("GetDocumentation", [&] {
      return type_.GetDocumentation(function.memberId, name.put(), help.put(), nullptr, nullptr);
    });
    const bool isNamed = handedOver(documented, name, help);
    if (!findings_.expect(isNamed && name, "function-described", "GetDocumentation names " + place(index),
                          hex(documented)))
      return;
    DISPID dispId = 0;
    const HRESULT resolved = resolve(findings_, object_, name.get(), dispId);
    if (!findings_.expect(SUCCEEDED(resolved), "name-resolves",
                          "GetIDsOfNames knows the name of " + place(index) + ", " + narrow(name.get()),
                          hex(resolved)))
      return;
    if ((function.flags & (FUNCFLAG_FHIDDEN | FUNCFLAG_FNONBROWSABLE)) != 0 || !isProperty(function)) return;
    findings_.expect(dispId != 0 && dispId != ofPlugIns, "property-id",
                     "the DISPID of " + narrow(name.get()) + " is neither 0 nor -23", std::to_string(dispId));
    if (function.kind == INVOKE_PROPERTYPUT) {
      puts_.insert(name.get());
    } else {
      checkTypeName(findings_, type_, function, narrow(name.get()));
      properties_.push_back({name.get(), dispId, function.type, false});
    }
  }

  Findings& findings_;
  IDispatch& object_;
  ITypeInfo& type_;
  std::vector<Property> properties_;
  std::set<std::wstring> puts_;
};

}  // namespace

std::vector<Property> checkTypeInformation(Findings& findings, IDispatch& object) {
  InterfaceHolder<ITypeInfo> type;
  const HRESULT got =
      findings.call("GetTypeInfo", [&] { return object.GetTypeInfo(0, GetUserDefaultLangID(), type.put()); });
  const bool isGiven = handedOver(got, type);
  if (!findings.expect(isGiven && type, "type-information",
                       "GetTypeInfo answers the type information of the object",
                       SUCCEEDED(got) ? "null" : hex(got)))
    return {};
  UINT functions = 0;
  {
    TypeAttributesHolder attributes(*type.get());
    const HRESULT read = findings.call("GetTypeAttr", [&] { return type->GetTypeAttr(attributes.put()); });
    const bool isRead = handedOver(read, attributes);
    if (!findings.expect(isRead && attributes, "type-information", "GetTypeAttr answers its attributes",
                         SUCCEEDED(read) ? "null" : hex(read)))
      return {};
    functions = attributes->cFuncs;
  }
  findings.expect(functions > baseMethods, "type-information",
                  "functions after the seven of IUnknown and IDispatch",
                  std::to_string(functions) + " functions in all");
  checkBaseMethods(findings, *type.get(), functions);
  checkUnknownName(findings, object);
  return Walk(findings, object, *type.get()).run(functions);
}

}  // namespace velt::hostcheck
