// host/automation and host/palette: a part as an automation object. One table says everything about the properties; type
// information, names, values and categories read it.

#include <cwchar>
#include <new>
#include <span>
#include <vector>

#include "Parts.h"
#include "host/automation/IVeltBaseObject.h"
#include "host/automation/IVkPiPropertyDisplay.h"
#include "host/automation/IdValues.h"
#include "host/automation/TqAutoCreateInstance.h"
#include "host/com/ComError.h"
#include "host/com/IPerPropertyBrowsing.h"
#include "host/com/TypeInfo.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IOPMPropertyExtension.h"

namespace {

// --- the properties ----------------------------------------------------------------------------------------------------

struct Property {
  DISPID id;  // any number but 0, -23 and 1280 to 1301, which mean something to the layer
  const wchar_t* name;
  const wchar_t* label;
  const wchar_t* help;
  VARTYPE type;
  PROPCAT category;  // its name is categoryNames[category]
  long weight;       // place in the display order
  bool isWritable;
};

constexpr DISPID lengthId = 1, materialId = 2, diameterId = 3, nameId = 4;

// clang-format off
constexpr Property properties[] = {  // the first one is of pipes alone
    // id        name         label                help                             type     category weight writable
    {lengthId,   L"Length",   L"Length",           L"From end to end, in mm",       VT_R8,   1,       4,     false},
    {materialId, L"Material", L"Material",         L"What it is made of",           VT_UI4,  0,       3,     true},
    {diameterId, L"Diameter", L"Nominal diameter", L"Of the pipes that fit, in mm", VT_R8,   1,       2,     true},
    {nameId,     L"Name",     L"Name",             L"As it stands in the list",     VT_BSTR, 0,       1,     true},
};
// clang-format on
constexpr const wchar_t* categoryNames[] = {L"Part", L"Size"};

// A valve has no length.
std::span<const Property> propertiesOf(Kind kind) {
  return std::span(properties).subspan(kind == Kind::valve ? 1 : 0);
}

const Property* find(Kind kind, DISPID id) {
  for (const Property& property : propertiesOf(kind))
    if (property.id == id) return &property;
  return nullptr;
}

const Property* find(Kind kind, const wchar_t* name) {
  for (const Property& property : propertiesOf(kind))
    if (std::wcscmp(property.name, name) == 0) return &property;
  return nullptr;
}

VARIANT valueOf(const Part& part, const Property& property) {
  VARIANT value{};
  value.vt = property.type;
  if (property.id == lengthId) value.dblVal = part.length;
  if (property.id == materialId) value.ulVal = part.material;
  if (property.id == diameterId) value.dblVal = part.diameter;
  if (property.id == nameId) value.bstrVal = SysAllocString(part.name.c_str());
  return value;
}

// A refusal ends the write: the parts before this one keep the new value. What is thrown becomes the palette's message.
HRESULT setValue(Part& part, const Property& property, const VARIANT& value) {
  if (value.vt != property.type) return DISP_E_TYPEMISMATCH;
  if (property.id == diameterId && !(value.dblVal > 0))
    throw _com_error(E_INVALIDARG, L"A diameter is more than 0.");
  if (property.id == materialId && value.ulVal < materials.size()) part.material = value.ulVal;
  else if (property.id == diameterId) part.diameter = value.dblVal;
  else if (property.id == nameId && value.bstrVal != nullptr) part.name = value.bstrVal;
  else return E_INVALIDARG;
  return S_OK;
}

// What a method answers that succeeds. One that fails leaves its outputs as they were.
template <class T>
HRESULT give(T* output, std::type_identity_t<T> answer) {
  *output = answer;
  return S_OK;
}

// --- type information --------------------------------------------------------------------------------------------------

// The functions of a class: the layer makes a row of each that gets a property. Lives as long as the program, so
// references are not counted; what the layer does not call is not there.
class PartType final : public ITypeInfo {
 public:
  explicit PartType(Kind kind) : kind_(kind), functions_(baseMethods) {
    for (const Property& property : propertiesOf(kind)) {
      add(property, INVOKE_PROPERTYGET);
      if (property.isWritable) add(property, INVOKE_PROPERTYPUT);
    }
    attributes_.typekind = TKIND_DISPATCH;
    attributes_.cFuncs = static_cast<WORD>(functions_.size());
  }

  HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG AddRef() override { return 1; }
  ULONG Release() override { return 1; }

  HRESULT GetTypeAttr(TYPEATTR** attributes) override { return give(attributes, &attributes_); }
  void ReleaseTypeAttr(TYPEATTR*) override {}
  HRESULT GetFuncDesc(UINT index, FUNCDESC** function) override {
    if (index < baseMethods || index >= functions_.size()) return TYPE_E_ELEMENTNOTFOUND;
    return give(function, &functions_[index]);
  }
  void ReleaseFuncDesc(FUNCDESC*) override {}
  HRESULT GetDocumentation(MEMBERID member, BSTR* name, BSTR* help, DWORD*, BSTR*) override {
    const Property* const property = find(kind_, member);
    if (property == nullptr) return TYPE_E_ELEMENTNOTFOUND;
    if (name != nullptr) *name = SysAllocString(property->name);
    if (help != nullptr) *help = SysAllocString(property->help);
    return S_OK;
  }

  HRESULT GetTypeComp(ITypeComp**) override { return E_NOTIMPL; }
  HRESULT GetVarDesc(UINT, VARDESC**) override { return E_NOTIMPL; }
  HRESULT GetNames(MEMBERID, BSTR*, UINT, UINT*) override { return E_NOTIMPL; }
  HRESULT GetRefTypeOfImplType(UINT, HREFTYPE*) override { return E_NOTIMPL; }
  HRESULT GetImplTypeFlags(UINT, INT*) override { return E_NOTIMPL; }
  HRESULT GetIDsOfNames(LPOLESTR*, UINT, MEMBERID*) override { return E_NOTIMPL; }
  HRESULT Invoke(void*, MEMBERID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
  HRESULT GetDllEntry(MEMBERID, INVOKEKIND, BSTR*, BSTR*, WORD*) override { return E_NOTIMPL; }
  HRESULT GetRefTypeInfo(HREFTYPE, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT AddressOfMember(MEMBERID, INVOKEKIND, void**) override { return E_NOTIMPL; }
  HRESULT CreateInstance(IUnknown*, REFIID, void**) override { return E_NOTIMPL; }
  HRESULT GetMops(MEMBERID, BSTR*) override { return E_NOTIMPL; }
  HRESULT GetContainingTypeLib(ITypeLib**, UINT*) override { return E_NOTIMPL; }
  void ReleaseVarDesc(VARDESC*) override {}

 private:
  void add(const Property& property, INVOKEKIND kind) {
    FUNCDESC function{};
    function.memid = property.id;
    function.invkind = kind;
    function.elemdescFunc.tdesc.vt = property.type;
    functions_.push_back(function);
  }

  static constexpr UINT baseMethods = 7;  // the functions begin with those of IUnknown and IDispatch
  Kind kind_;
  std::vector<FUNCDESC> functions_;
  TYPEATTR attributes_{};
};

PartType& typeOf(Kind kind) {
  static PartType pipes(Kind::pipe);
  static PartType valves(Kind::valve);
  return kind == Kind::pipe ? pipes : valves;
}

// --- the automation object ---------------------------------------------------------------------------------------------

// Made for one selection, and ended by its last Release. A failing method leaves its outputs as they were.
class PartObject final : public IDispatch,
                         public IVeltBaseObject,
                         public IOPMPropertyExtension,
                         public ICategorizeProperties,
                         public IPerPropertyBrowsing,
                         public IVkPiPropertyDisplay {
 public:
  explicit PartObject(Kind kind) : kind_(kind) {}

  HRESULT QueryInterface(REFIID iid, void** object) override {
    if (iid == IID_IUnknown || iid == IID_IDispatch) *object = static_cast<IDispatch*>(this);
    else if (iid == velt::IID_IVeltBaseObject) *object = static_cast<IVeltBaseObject*>(this);
    else if (iid == IID_IOPMPropertyExtension) *object = static_cast<IOPMPropertyExtension*>(this);
    else if (iid == IID_ICategorizeProperties) *object = static_cast<ICategorizeProperties*>(this);
    else if (iid == IID_IPerPropertyBrowsing) *object = static_cast<IPerPropertyBrowsing*>(this);
    else if (iid == velt::IID_IVkPiPropertyDisplay) *object = static_cast<IVkPiPropertyDisplay*>(this);
    else *object = nullptr;
    return *object != nullptr ? (AddRef(), S_OK) : E_NOINTERFACE;
  }
  ULONG AddRef() override { return ++references_; }
  ULONG Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  // IVeltBaseObject: which part this object speaks for. Without one, what is asked later fails.
  HRESULT SetObjectId(VkDbObjectId& id, VkDbObjectId, wchar_t*) override {
    const auto place = static_cast<std::size_t>(id.asOldId()) - firstPartId;
    if (place >= parts.size() || parts[place].kind != kind_) return E_INVALIDARG;
    part_ = &parts[place];
    id_ = id;
    return S_OK;
  }
  HRESULT GetObjectId(VkDbObjectId* id) override { return give(id, id_); }

  // IDispatch: members by name and number.
  HRESULT GetTypeInfoCount(UINT* count) override { return give(count, 1); }
  HRESULT GetTypeInfo(UINT, LCID, ITypeInfo** type) override { return give(type, &typeOf(kind_)); }
  HRESULT GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    const Property* const property = find(kind_, names[0]);
    return property != nullptr ? give(ids, property->id) : DISP_E_UNKNOWNNAME;
  }
  HRESULT Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO*,
                 UINT*) override {
    const Property* const property = find(kind_, id);
    if (property == nullptr) return DISP_E_MEMBERNOTFOUND;
    if (part_ == nullptr) return E_UNEXPECTED;
    if (flags == DISPATCH_PROPERTYPUT) return setValue(*part_, *property, arguments->rgvarg[0]);
    return give(result, valueOf(*part_, *property));
  }

  // IOPMPropertyExtension: whether and how a row is shown.
  HRESULT GetDisplayName(DISPID id, BSTR* name) override {
    const Property* const property = find(kind_, id);
    return property != nullptr ? give(name, SysAllocString(property->label)) : DISP_E_MEMBERNOTFOUND;
  }
  HRESULT Editable(DISPID, BOOL* editable) override { return give(editable, 1); }
  HRESULT ShowProperty(DISPID, BOOL* show) override { return give(show, 1); }

  // ICategorizeProperties: categories from -32 to -1 would have names from a library, all others are the object's own.
  HRESULT MapPropertyToCategory(DISPID id, PROPCAT* category) override {
    const Property* const property = find(kind_, id);
    return property != nullptr ? give(category, property->category) : DISP_E_MEMBERNOTFOUND;
  }
  HRESULT GetCategoryName(PROPCAT category, LCID, BSTR* name) override {
    return give(name, SysAllocString(categoryNames[category]));
  }

  // IPerPropertyBrowsing: the choices of a property. The caller frees texts and arrays.
  HRESULT GetPredefinedStrings(DISPID id, CALPOLESTR* texts, CADWORD* cookies) override {
    if (id != materialId) return E_NOTIMPL;
    constexpr ULONG count = materials.size();
    *texts = {count, static_cast<LPOLESTR*>(CoTaskMemAlloc(count * sizeof(LPOLESTR)))};
    *cookies = {count, static_cast<DWORD*>(CoTaskMemAlloc(count * sizeof(DWORD)))};
    for (ULONG i = 0; i < count; ++i) {
      texts->pElems[i] = SysAllocString(materials[i]);
      cookies->pElems[i] = i;
    }
    return S_OK;
  }
  // Not implemented: the value of the property is the place of its choice. Of any other integer or text answer it here.
  HRESULT GetPredefinedValue(DISPID, DWORD, VARIANT*) override { return E_NOTIMPL; }
  HRESULT GetDisplayString(DISPID, BSTR*) override { return E_NOTIMPL; }
  HRESULT MapPropertyToPage(DISPID, CLSID*) override { return E_NOTIMPL; }

  // IVkPiPropertyDisplay: the place of a row in the display order.
  HRESULT GetPropertyWeight(VARIANT id, long* weight) override {
    const Property* const property = find(kind_, id.lVal);
    return property != nullptr ? give(weight, property->weight) : DISP_E_MEMBERNOTFOUND;
  }
  HRESULT GetCustomPropertyCtrl(VARIANT, LCID, BSTR*) override { return E_NOTIMPL; }
  HRESULT GetPropertyColor(VARIANT, ULONG*) override { return E_NOTIMPL; }
  HRESULT GetPropertyTextColor(VARIANT, ULONG*) override { return E_NOTIMPL; }
  HRESULT IsFullView(VARIANT, BOOL*) override { return E_NOTIMPL; }

 private:
  Kind kind_;
  ULONG references_ = 1;
  Part* part_ = nullptr;
  VkDbObjectId id_;
};

}  // namespace

HRESULT TqAutoCreateInstance(REFCLSID clsid, IUnknown*, DWORD, REFIID iid, void** object) {
  *object = nullptr;
  if (!(clsid == CLSID_Pipe) && !(clsid == CLSID_Valve)) return REGDB_E_CLASSNOTREG;
  auto* const made = new (std::nothrow) PartObject(clsid == CLSID_Pipe ? Kind::pipe : Kind::valve);
  if (made == nullptr) return E_OUTOFMEMORY;
  const HRESULT result = made->QueryInterface(iid, object);
  made->Release();
  return result;
}
