// The walk through an automation object's type information.

#include "holders/InterfaceHolder.h"
#include "holders/StringHolder.h"
#include "holders/TypeInfoBlockHolder.h"
#include "host/com/ComRuntime.h"
#include "host/com/TypeInfo.h"
#include "host/palette/IOPMPropertyExtension.h"
#include "propdata/VeltPropData.h"
#include "propdata/support/Guards.h"

using namespace velt::holders;
using namespace velt::propdata;
namespace message = velt::errors::message;

namespace {

// The three methods of IUnknown and the four of IDispatch come first in every function table.
constexpr UINT firstOwnFunction = 7;
constexpr WORD hiddenFlags = FUNCFLAG_FHIDDEN | FUNCFLAG_FNONBROWSABLE;

// What is kept of a function description; the description itself is given back at once.
struct Function {
  MEMBERID memberId;
  INVOKEKIND kind;
  WORD flags;
  VARTYPE returnType;
  HREFTYPE userDefinedType;  // means something for VT_USERDEFINED only
};

bool failWith(CStdStr<wchar_t>& errorText, int id) {
  errorText = LoadErrString(id);
  return false;
}

bool readFunction(ITypeInfo& typeInfo, UINT index, Function& function) {
  FunctionDescriptionHolder description(typeInfo);
  if (FAILED(typeInfo.GetFuncDesc(index, description.put())) || !description) return false;
  const TYPEDESC& type = description->elemdescFunc.tdesc;
  function.memberId = description->memid;
  function.kind = description->invkind;
  function.flags = description->wFuncFlags;
  function.returnType = type.vt;
  function.userDefinedType = type.vt == VT_USERDEFINED ? type.hreftype : 0;
  return true;
}

void readEnumMember(ITypeInfo& enumeration, UINT index, PROPINFO& prop) {
  VariableDescriptionHolder member(enumeration);
  if (FAILED(enumeration.GetVarDesc(index, member.put())) || !member) return;
  StringHolder name;
  UINT nameCount = 0;
  [[maybe_unused]] const HRESULT named = enumeration.GetNames(member->memid, name.put(), 1, &nameCount);
  if (member->varkind == VAR_CONST && member->lpvarValue != nullptr) {
    mustAppend(prop.choiceValues, static_cast<int>(member->lpvarValue->lVal));
    mustAppend(prop.choiceNames, CStdStr<wchar_t>(name.get()));
  }
}

// False when the type does not tell what kind it is.
bool readEnumMembers(ITypeInfo& referenced, PROPINFO& prop) {
  TypeAttributesHolder attributes(referenced);
  if (FAILED(referenced.GetTypeAttr(attributes.put())) || !attributes) return false;
  if (attributes->typekind != TKIND_ENUM) return true;
  for (UINT i = 0; i < attributes->cVars; ++i)
    readEnumMember(referenced, i, prop);
  return true;
}

// The code of the type's name, or the code given when the name cannot be had.
int customTypeOf(ITypeInfo& referenced, int otherwise) {
  InterfaceHolder<ITypeLib> library;
  UINT index = 0;
  if (FAILED(referenced.GetContainingTypeLib(library.put(), &index)) || !library) return otherwise;
  StringHolder name;
  StringHolder documentation;
  DWORD helpContext = 0;
  StringHolder helpFile;
  if (FAILED(library->GetDocumentation(static_cast<INT>(index), name.put(), documentation.put(), &helpContext,
                                       helpFile.put()))) {
    return otherwise;
  }
  return NameToUserdefinedType(name.get());
}

// Fills the choices of an enumeration and answers the custom type; what cannot be read is left out.
int resolveUserDefinedType(ITypeInfo& typeInfo, HREFTYPE type, PROPINFO& prop) {
  constexpr int notResolved = PropertyKind::none;
  InterfaceHolder<ITypeInfo> referenced;
  [[maybe_unused]] const HRESULT found = typeInfo.GetRefTypeInfo(type, referenced.put());
  if (!referenced || !readEnumMembers(*referenced.get(), prop)) return notResolved;
  return customTypeOf(*referenced.get(), notResolved);
}

CStdStr<wchar_t> displayNameOf(IOPMPropertyExtension& extension, const PROPINFO& prop) {
  StringHolder displayName;
  [[maybe_unused]] const HRESULT answered = extension.GetDisplayName(prop.dispId, displayName.put());
  const CStdStr<wchar_t> text(displayName.get());
  return text.empty() ? prop.name : text;
}

bool isShown(IOPMPropertyExtension& extension, DISPID dispId) {
  BOOL show = 1;
  [[maybe_unused]] const HRESULT answered = extension.ShowProperty(dispId, &show);
  // QUIRK(show_flag_exactly_one): any other byte hides the property, -1 too; objects hide rows with it.
  return show == 1;
}

void listGetter(const VeltPropData& data, ITypeInfo& typeInfo, IOPMPropertyExtension& extension,
                const Function& function, DISPID dispId, const StringHolder& name,
                const StringHolder& documentation, TqVector<PROPINFO>& props) {
  PROPINFO prop;
  prop.clsid = data.clsid;
  prop.pDispatch = data.pDispatch;
  prop.dispId = dispId;
  prop.name = CStdStr<wchar_t>(name.get());
  prop.description = CStdStr<wchar_t>(documentation.get());
  // QUIRK(two_codes_for_no_custom_type): none for a type that is not user-defined, unknownType for one whose name
  // tells nothing; whoever reads the code treats both alike.
  int customType = PropertyKind::none;
  if (function.returnType == VT_USERDEFINED) {
    customType = resolveUserDefinedType(typeInfo, function.userDefinedType, prop);
  }
  prop.displayName = displayNameOf(extension, prop);
  const bool shown = isShown(extension, dispId);
  prop.customType = customType;
  prop.objectId.setFromOldId(data.oldId);
  prop.valueType = function.returnType;
  if (shown) mustAppend(props, prop);
}

bool walkFunction(const VeltPropData& data, ITypeInfo& typeInfo, IOPMPropertyExtension& extension, UINT index,
                  TqVector<PROPINFO>& props, CStringArray& putNames, CStdStr<wchar_t>& errorText) {
  Function function{};
  if (!readFunction(typeInfo, index, function)) return failWith(errorText, message::functionDescription);

  StringHolder name;
  StringHolder documentation;
  if (FAILED(
          typeInfo.GetDocumentation(function.memberId, name.put(), documentation.put(), nullptr, nullptr))) {
    return failWith(errorText, message::documentation);
  }

  // QUIRK(every_name_resolved_first): methods and hidden accessors too, before any of them is filtered out: a
  // single name that does not resolve ends the walk, which tells class authors at once.
  wchar_t noName[] = L"";
  LPOLESTR nameToResolve = name.get() != nullptr ? name.get() : noName;
  DISPID dispId = 0;
  if (FAILED(data.pDispatch->GetIDsOfNames(GUID_NULL, &nameToResolve, 1, LOCALE_SYSTEM_DEFAULT, &dispId))) {
    errorText.Format(LoadErrString(message::nameNotResolved).c_str(), nameToResolve);
    return false;
  }

  if ((function.flags & hiddenFlags) != 0) return true;
  if (function.kind == INVOKE_PROPERTYPUT) {
    putNames.Add(nameToResolve);
  } else if (function.kind == INVOKE_PROPERTYGET) {
    listGetter(data, typeInfo, extension, function, dispId, name, documentation, props);
  }
  return true;
}

bool walk(const VeltPropData& data, TqVector<PROPINFO>& props, CStringArray& putNames,
          CStdStr<wchar_t>& errorText) {
  InterfaceHolder<ITypeInfo> typeInfo;
  if (data.pDispatch == nullptr
      || FAILED(data.pDispatch->GetTypeInfo(0, GetUserDefaultLangID(), typeInfo.put()))) {
    return failWith(errorText, message::typeInfoFailed);
  }
  if (!typeInfo) return failWith(errorText, message::typeInfoMissing);

  UINT functionCount = 0;
  {
    TypeAttributesHolder attributes(*typeInfo.get());
    if (FAILED(typeInfo->GetTypeAttr(attributes.put())) || !attributes) {
      return failWith(errorText, message::typeAttributes);
    }
    functionCount = attributes->cFuncs;
  }
  if (functionCount == 0) return true;

  InterfaceHolder<IOPMPropertyExtension> extension;
  if (FAILED(query(data.pUnknown, IID_IOPMPropertyExtension, extension))) {
    return failWith(errorText, message::noPropertyExtension);
  }
  for (UINT index = firstOwnFunction; index < functionCount; ++index) {
    if (!walkFunction(data, *typeInfo.get(), *extension.get(), index, props, putNames, errorText))
      return false;
  }
  return true;
}

}  // namespace

bool GetPropTypeInfo(VeltPropData* data, TqVector<PROPINFO>& props, CStringArray& putNames,
                     CStdStr<wchar_t>& errorText, [[maybe_unused]] bool& flag) {
  props.clear();
  putNames.RemoveAll();
  putNames.FreeExtra();
  return orMessageOnComError(errorText, [&] { return walk(*data, props, putNames, errorText); });
}
