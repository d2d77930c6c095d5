#pragma once

// IDispatch for the small objects that are not entities: colors and hyperlinks. Like an entity's class, each has one
// table of its members, and everything is read from it.

#include <cstdint>
#include <string_view>

#include "embedded/automation/model/AutomationObject.h"
#include "embedded/automation/model/ClassRegistry.h"
#include "embedded/automation/model/Guard.h"
#include "embedded/automation/model/NameIndex.h"
#include "embedded/automation/model/Value.h"
#include "embedded/com/ComObject.h"

namespace velt::automation {

template <class Object>
struct MemberRow {
  DISPID dispId;
  const wchar_t* name;
  const wchar_t* help;
  ValueType type;
  // Throws Refusal. The argument is the one of a method, 0 for a property.
  Value (*get)(Object&, std::int32_t argument);
  // Null: read-only.
  void (*put)(Object&, const Value&);
  // Called with one whole number.
  bool isMethod;
};

// `Object` has the static members `typeName`, `typeHelp`, `accountName` (in the ledger), and `members`, a list of
// MemberRow<Object>.
template <class Object, class Interface>
class TableDispatch : public com::ComObject<Interface> {
 public:
  // What the type library says of it.
  static DispatchType type() {
    DispatchType described{Object::typeName, Object::typeHelp, com::InterfaceTraits<Interface>::iid, {}};
    for (const MemberRow<Object>& row : Object::members) {
      const INVOKEKIND kind = row.isMethod ? INVOKE_FUNC : INVOKE_PROPERTYGET;
      TypeFunction function{row.dispId, row.name, row.help, kind, row.type};
      if (row.isMethod) function.parameter = VT_I4;
      described.functions.push_back(function);
      if (row.put == nullptr) continue;
      function.kind = INVOKE_PROPERTYPUT;
      described.functions.push_back(function);
    }
    return described;
  }

  HRESULT GetTypeInfoCount(UINT* count) final {
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
  }

  HRESULT GetTypeInfo(UINT index, LCID, ITypeInfo** typeInfo) final {
    if (typeInfo == nullptr) return E_POINTER;
    *typeInfo = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    return guarded([&] {
      return ClassRegistry::ofHost().library().GetTypeInfoOfGuid(com::InterfaceTraits<Interface>::iid,
                                                                 typeInfo);
    });
  }

  HRESULT GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* dispIds) final {
    if (!(iid == GUID_NULL)) return unknownInterface;
    if (names == nullptr || dispIds == nullptr || (count > 0 && names[0] == nullptr)) return E_POINTER;
    if (count == 0) return E_INVALIDARG;
    for (UINT i = 0; i < count; ++i)
      dispIds[i] = DISPID_UNKNOWN;
    for (const MemberRow<Object>& row : Object::members) {
      if (NameIndex::same(row.name, names[0])) dispIds[0] = row.dispId;
    }
    return dispIds[0] != DISPID_UNKNOWN && count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
  }

  HRESULT Invoke(DISPID dispId, REFIID iid, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                 EXCEPINFO* exception, UINT* argumentError) final {
    if (!(iid == GUID_NULL)) return unknownInterface;
    if (params == nullptr || (params->cArgs > 0 && params->rgvarg == nullptr)) return E_POINTER;
    const MemberRow<Object>* row = find(dispId);
    if (row == nullptr) return DISP_E_MEMBERNOTFOUND;
    return guardedInvoke(exception, Object::typeName, [&] {
      if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0)
        return put(*row, *params, argumentError);
      if ((flags & (row->isMethod ? DISPATCH_METHOD | DISPATCH_PROPERTYGET : DISPATCH_PROPERTYGET)) == 0) {
        return DISP_E_MEMBERNOTFOUND;
      }
      return get(*row, *params, result, argumentError);
    });
  }

 protected:
  TableDispatch() : TableDispatch::ComObject(account()) {}

 private:
  static platform::LedgerAccount& account() {
    static platform::LedgerAccount& counted = platform::Ledger::account(Object::accountName);
    return counted;
  }

  static const MemberRow<Object>* find(DISPID dispId) {
    for (const MemberRow<Object>& row : Object::members) {
      if (row.dispId == dispId) return &row;
    }
    return nullptr;
  }

  [[nodiscard]] Object& object() { return static_cast<Object&>(*this); }

  HRESULT get(const MemberRow<Object>& row, const DISPPARAMS& params, VARIANT* result, UINT* argumentError) {
    if (params.cArgs != (row.isMethod ? 1U : 0U)) return DISP_E_BADPARAMCOUNT;
    if (result == nullptr) return E_POINTER;
    std::int32_t argument = 0;
    if (row.isMethod) {
      const std::optional<Value> given = fromVariant(params.rgvarg[0], VT_I4);
      if (!given) return mismatch(argumentError);
      argument = std::get<std::int32_t>(*given);
    }
    *result = toVariant(row.get(object(), argument), row.type);
    return S_OK;
  }

  HRESULT put(const MemberRow<Object>& row, const DISPPARAMS& params, UINT* argumentError) {
    if (row.put == nullptr) return DISP_E_MEMBERNOTFOUND;
    if (params.cArgs != 1 || params.cNamedArgs != 1) return DISP_E_BADPARAMCOUNT;
    const std::optional<Value> value = fromVariant(params.rgvarg[0], row.type);
    if (!value) return mismatch(argumentError);
    row.put(object(), *value);
    return S_OK;
  }

  static HRESULT mismatch(UINT* argumentError) {
    if (argumentError != nullptr) *argumentError = 0;
    return DISP_E_TYPEMISMATCH;
  }
};

}  // namespace velt::automation
