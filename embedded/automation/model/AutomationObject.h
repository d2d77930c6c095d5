#pragma once

// The automation object of an entity: everything that it answers comes from its class's table.
//
// One allocation, twenty words: fifty thousand of them are made for one selection. An object knows its class, and the id
// and the place of the database object that it is bound to, and reads the drawing at each call; all that it keeps are the
// points that it was asked for, for as long as the drawing is not edited. So it is never out of date, and it does not keep
// the drawing open.
// Threads: those of the drawing that it is bound to.
// Failure: what a getter or a setter refuses becomes DISP_E_EXCEPTION with the reason in the exception information, or
// the reason's own result where an interface has no room for a text. Out-parameters stay untouched. A put that fails
// changes nothing, and a put whose value could not be read back afterwards fails. No entity on a locked layer is changed,
// whatever the caller has looked at before. What reads, writes and asks whether a property is editable is watched, and
// throws a _com_error before it has done anything when it is cancelled: see platform/Watch.h.

#include <string_view>

#include "embedded/automation/model/AskedPoints.h"
#include "embedded/automation/model/ClassRegistry.h"
#include "embedded/com/ComObject.h"
#include "embedded/database/VkDbImpObject.h"

namespace velt::automation {

// The result for a caller that names an interface where the only one that is known is GUID_NULL.
inline constexpr HRESULT unknownInterface = com::failure(0x80020001U);

// `Dispatch` is IDispatch, or the interface of a class that extends it.
template <class Dispatch>
class AutomationObject
    : public com::ComObject<Dispatch, IVeltBaseObject, IOPMPropertyExtension, IOPMPropertyExpander,
                            ICategorizeProperties, IPerPropertyBrowsing, IVkPiPropertyDisplay> {
 public:
  // The registry of the class has to outlive the object.
  explicit AutomationObject(const RegisteredClass& kind);

  HRESULT GetTypeInfoCount(UINT* count) final;
  HRESULT GetTypeInfo(UINT index, LCID locale, ITypeInfo** typeInfo) final;
  HRESULT GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* dispIds) final;
  HRESULT Invoke(DISPID dispId, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params, VARIANT* result,
                 EXCEPINFO* exception, UINT* argumentError) final;

  // E_INVALIDARG, and nothing changes, for an id that names no object, or one of another kind than the class is for.
  HRESULT SetObjectId(VkDbObjectId& object, VkDbObjectId owner, wchar_t* keyword) final;
  HRESULT GetObjectId(VkDbObjectId* object) final;

  HRESULT GetDisplayName(DISPID dispId, BSTR* name) final;
  // The same for all objects of a class but for rows that name obstacles: rows of which only some can be edited drop out
  // of a palette that shows several entities. What else a single entity cannot take is refused when it is put.
  HRESULT Editable(DISPID dispId, BOOL* editable) final;
  HRESULT ShowProperty(DISPID dispId, BOOL* show) final;

  HRESULT GetElementValue(DISPID dispId, DWORD cookie, VARIANT* value) final;
  HRESULT SetElementValue(DISPID dispId, DWORD cookie, VARIANT value) final;
  HRESULT GetElementStrings(DISPID dispId, CALPOLESTR* strings, CADWORD* cookies) final;
  HRESULT GetElementGrouping(DISPID dispId, SHORT* grouping) final;
  HRESULT GetGroupCount(DISPID dispId, long* groups) final;

  HRESULT MapPropertyToCategory(DISPID dispId, PROPCAT* category) final;
  // The locale means nothing here: callers are known to pass other numbers in its place.
  HRESULT GetCategoryName(PROPCAT category, LCID locale, BSTR* name) final;

  HRESULT GetDisplayString(DISPID dispId, BSTR* text) final;
  HRESULT MapPropertyToPage(DISPID dispId, CLSID* page) final;
  HRESULT GetPredefinedStrings(DISPID dispId, CALPOLESTR* strings, CADWORD* cookies) final;
  HRESULT GetPredefinedValue(DISPID dispId, DWORD cookie, VARIANT* value) final;

  HRESULT GetCustomPropertyCtrl(VARIANT property, LCID locale, BSTR* control) final;
  HRESULT GetPropertyColor(VARIANT property, ULONG* color) final;
  HRESULT GetPropertyTextColor(VARIANT property, ULONG* color) final;
  HRESULT IsFullView(VARIANT property, BOOL* full) final;
  HRESULT GetPropertyWeight(VARIANT property, long* weight) final;

 protected:
  // Throws Refusal when the object is not bound, or bound to what is no longer there.
  [[nodiscard]] Subject subject() const;
  [[nodiscard]] const AutomationClass& kind() const { return kind_.index.kind(); }

 private:
  // What it is bound to; null when that is nothing, or when its drawing is closed.
  [[nodiscard]] const VkDbImpObject* bound() const;
  [[nodiscard]] Subject subjectNow(AskedPoints* asked = nullptr) const;
  HRESULT giveStrings(const ClassIndex::Entry& entry, CALPOLESTR& strings, CADWORD& cookies) const;
  HRESULT get(const PropertyRow& row, const DISPPARAMS& params, VARIANT* result);
  HRESULT put(const PropertyRow& row, WORD flags, const DISPPARAMS& params, UINT* argumentError);

  const RegisteredClass& kind_;
  VkDbObjectId id_;
  // The one that had the id when the object was bound to it: to look it up takes longer than to see that it has it still.
  const VkDbImpObject* object_ = nullptr;
  AskedPoints asked_;
};

extern template class AutomationObject<IDispatch>;
extern template class AutomationObject<IVeltHatch>;

// The object of every class that has no interface of its own.
class EntityObject final : public AutomationObject<IDispatch> {
 public:
  using AutomationObject::AutomationObject;
};

}  // namespace velt::automation
