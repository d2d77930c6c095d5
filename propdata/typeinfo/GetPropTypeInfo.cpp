// The walk through an automation object's type information.

#include "errors/Guard.h"
#include "errors/Messages.h"
#include "holders/InterfaceHolder.h"
#include "holders/StringHolder.h"
#include "holders/TypeInfoBlockHolder.h"
#include "host/com/ComRuntime.h"
#include "host/com/TypeInfo.h"
#include "host/palette/IOPMPropertyExtension.h"
#include "propdata/VeltPropData.h"
#include "propdata/support/Lists.h"
#include "propdata/typeinfo/Cores.h"

using namespace velt::holders;
using namespace velt::propdata;
using velt::errors::failWith;
using velt::errors::guarded;
namespace message = velt::errors::message;

namespace {

// The three methods of IUnknown and the four of IDispatch come first in every function table.
constexpr UINT firstOwnFunction = 7;
constexpr WORD hiddenFlags = FUNCFLAG_FHIDDEN | FUNCFLAG_FNONBROWSABLE;

// --- user-defined types --------------------------------------------------------------------------------------

void readEnumMember(ITypeInfo& enumeration, UINT index, PROPINFO& prop) {
  VariableDescriptionHolder member(enumeration);
  if (!handedOver(enumeration.GetVarDesc(index, member.put()), member) || !member) return;
  StringHolder name;
  UINT nameCount = 0;
  // QUIRK(member_name_result_unexamined): a member without a name is a choice without a label, so that names and
  // values stay parallel.
  [[maybe_unused]] const HRESULT named = enumeration.GetNames(member->memid, name.put(), 1, &nameCount);
  if (member->varkind == VAR_CONST && member->lpvarValue != nullptr) {
    mustAppend(prop.choiceValues, static_cast<int>(member->lpvarValue->lVal));
    mustAppend(prop.choiceNames, CStdStr<wchar_t>(name.get()));
  }
}

// False when the type's attributes cannot be read.
bool readEnumMembers(ITypeInfo& referenced, PROPINFO& prop) {
  TypeAttributesHolder attributes(referenced);
  if (!handedOver(referenced.GetTypeAttr(attributes.put()), attributes) || !attributes) return false;
  if (attributes->typekind != TKIND_ENUM) return true;
  for (UINT i = 0; i < attributes->cVars; ++i)
    readEnumMember(referenced, i, prop);
  return true;
}

// What the type's name tells; none when the name cannot be had.
int kindByTypeName(ITypeInfo& referenced) {
  InterfaceHolder<ITypeLib> library;
  UINT index = 0;
  if (!handedOver(referenced.GetContainingTypeLib(library.put(), &index), library) || !library)
    return PropertyKind::none;
  StringHolder name;
  StringHolder documentation;
  DWORD helpContext = 0;
  StringHolder helpFile;
  const HRESULT documented = library->GetDocumentation(static_cast<INT>(index), name.put(),
                                                       documentation.put(), &helpContext, helpFile.put());
  if (!handedOver(documented, name, documentation, helpFile)) return PropertyKind::none;
  return kindOfTypeName(name.get());
}

// Fills the choices of an enumeration and answers the custom type; what cannot be read is left out.
int resolveUserDefinedType(ITypeInfo& typeInfo, HREFTYPE type, PROPINFO& prop) {
  InterfaceHolder<ITypeInfo> referenced;
  // QUIRK(reference_result_unexamined): only the pointer counts, also one that came with a failure; old type
  // libraries warn that way.
  [[maybe_unused]] const HRESULT found = typeInfo.GetRefTypeInfo(type, referenced.put());
  if (!referenced || !readEnumMembers(*referenced.get(), prop)) return PropertyKind::none;
  return kindByTypeName(*referenced.get());
}

// --- the walk ------------------------------------------------------------------------------------------------

// What is kept of a function description; the description itself is given back at once.
struct Function {
  MEMBERID memberId;
  INVOKEKIND kind;
  WORD flags;
  VARTYPE returnType;
  // Means something for VT_USERDEFINED only.
  HREFTYPE userDefinedType;
};

class Walk {
 public:
  // What is listed goes into props and putNames at once, and stays there when the walk ends early.
  Walk(const VeltPropData& data, TqVector<PROPINFO>& props, CStringArray& putNames,
       CStdStr<wchar_t>& errorText)
      : data_(data), props_(props), putNames_(putNames), errorText_(errorText) {}

  bool run() {
    if (data_.pDispatch == nullptr
        || !handedOver(data_.pDispatch->GetTypeInfo(0, GetUserDefaultLangID(), typeInfo_.put()), typeInfo_)) {
      return failWith(errorText_, message::typeInfoFailed);
    }
    if (!typeInfo_) return failWith(errorText_, message::typeInfoMissing);
    UINT functionCount = 0;
    if (!countFunctions(functionCount)) return failWith(errorText_, message::typeAttributes);
    if (functionCount == 0) return true;
    if (FAILED(query(data_.pUnknown, IID_IOPMPropertyExtension, extension_)))
      return failWith(errorText_, message::noPropertyExtension);
    for (UINT index = firstOwnFunction; index < functionCount; ++index) {
      if (!visit(index)) return false;
    }
    return true;
  }

 private:
  bool countFunctions(UINT& count) {
    TypeAttributesHolder attributes(*typeInfo_.get());
    if (!handedOver(typeInfo_->GetTypeAttr(attributes.put()), attributes) || !attributes) return false;
    count = attributes->cFuncs;
    return true;
  }

  bool describe(UINT index, Function& function) {
    FunctionDescriptionHolder description(*typeInfo_.get());
    if (!handedOver(typeInfo_->GetFuncDesc(index, description.put()), description) || !description)
      return false;
    const TYPEDESC& type = description->elemdescFunc.tdesc;
    function.memberId = description->memid;
    function.kind = description->invkind;
    function.flags = description->wFuncFlags;
    function.returnType = type.vt;
    function.userDefinedType = type.vt == VT_USERDEFINED ? type.hreftype : 0;
    return true;
  }

  bool visit(UINT index) {
    Function function{};
    if (!describe(index, function)) return failWith(errorText_, message::functionDescription);

    StringHolder name;
    StringHolder documentation;
    const HRESULT documented =
        typeInfo_->GetDocumentation(function.memberId, name.put(), documentation.put(), nullptr, nullptr);
    if (!handedOver(documented, name, documentation)) return failWith(errorText_, message::documentation);

    // QUIRK(every_name_resolved_first): methods and hidden accessors too, before any of them is filtered out: a
    // single name that does not resolve ends the walk, which tells class authors at once.
    wchar_t noName[] = L"";
    LPOLESTR nameToResolve = name ? name.get() : noName;
    DISPID dispId = 0;
    if (FAILED(
            data_.pDispatch->GetIDsOfNames(GUID_NULL, &nameToResolve, 1, LOCALE_SYSTEM_DEFAULT, &dispId))) {
      return failWith(errorText_, message::nameNotResolved, CStdStr<wchar_t>(nameToResolve));
    }

    if ((function.flags & hiddenFlags) != 0) return true;
    if (function.kind == INVOKE_PROPERTYPUT) {
      putNames_.Add(nameToResolve);
    } else if (function.kind == INVOKE_PROPERTYGET) {
      list(function, dispId, name, documentation);
    }
    return true;
  }

  void list(const Function& function, DISPID dispId, const StringHolder& name,
            const StringHolder& documentation) {
    PROPINFO prop;
    prop.clsid = data_.clsid;
    prop.pDispatch = data_.pDispatch;
    prop.dispId = dispId;
    prop.name = CStdStr<wchar_t>(name.get());
    prop.description = CStdStr<wchar_t>(documentation.get());
    // QUIRK(two_codes_for_no_custom_type): none for a type that is not user-defined, unknownType for one whose
    // name tells nothing; whoever reads the code treats both alike.
    prop.customType = function.returnType == VT_USERDEFINED
                          ? resolveUserDefinedType(*typeInfo_.get(), function.userDefinedType, prop)
                          : PropertyKind::none;
    prop.displayName = displayNameOf(prop);
    if (!isShown(dispId)) return;
    prop.objectId.setFromOldId(data_.oldId);
    prop.valueType = function.returnType;
    mustAppend(props_, prop);
  }

  CStdStr<wchar_t> displayNameOf(const PROPINFO& prop) {
    StringHolder displayName;
    // QUIRK(display_name_result_unexamined): a text that a failing call left is the label.
    [[maybe_unused]] const HRESULT answered = extension_->GetDisplayName(prop.dispId, displayName.put());
    const CStdStr<wchar_t> text(displayName.get());
    return text.empty() ? prop.name : text;
  }

  bool isShown(DISPID dispId) {
    BOOL show = 1;
    [[maybe_unused]] const HRESULT answered = extension_->ShowProperty(dispId, &show);
    // QUIRK(show_flag_exactly_one): any other byte hides the property, -1 too; objects hide rows with it.
    return show == 1;
  }

  const VeltPropData& data_;
  TqVector<PROPINFO>& props_;
  CStringArray& putNames_;
  CStdStr<wchar_t>& errorText_;
  InterfaceHolder<ITypeInfo> typeInfo_;
  InterfaceHolder<IOPMPropertyExtension> extension_;
};

}  // namespace

namespace velt::propdata {

bool listProperties(const VeltPropData& data, TqVector<PROPINFO>& props, CStringArray& putNames,
                    CStdStr<wchar_t>& errorText) {
  mustClear(props);
  putNames.RemoveAll();
  putNames.FreeExtra();
  return Walk(data, props, putNames, errorText).run();
}

}  // namespace velt::propdata

bool GetPropTypeInfo(VeltPropData* data, TqVector<PROPINFO>& props, CStringArray& putNames,
                     CStdStr<wchar_t>& errorText, [[maybe_unused]] bool& flag) {
  return guarded(false, errorText, [&] { return listProperties(*data, props, putNames, errorText); });
}
