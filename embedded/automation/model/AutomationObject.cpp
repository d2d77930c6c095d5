#include "embedded/automation/model/AutomationObject.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>

#include "embedded/automation/model/Choices.h"
#include "embedded/automation/model/CountedStrings.h"
#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Followers.h"
#include "embedded/automation/model/Guard.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/automation/model/RefusalLog.h"
#include "embedded/automation/model/Sameness.h"
#include "embedded/database/ObjectTable.h"
#include "embedded/platform/Watch.h"
#include "holders/WholeVariant.h"

namespace velt::automation {
namespace {

HRESULT giveText(const wchar_t* text, BSTR* out) {
  BSTR copy = SysAllocString(text);
  if (copy == nullptr) return E_OUTOFMEMORY;
  *out = copy;
  return S_OK;
}

[[noreturn]] void refuseMissing(VkDbObjectId id, const VkDbImpObject* object) {
  if (id.isNull()) throw Refusal(E_UNEXPECTED, L"The object is not bound to an entity.");
  if (object == nullptr || object->record == dxf::none)
    throw Refusal(E_FAIL, L"The drawing of the entity is closed.");
  throw Refusal(E_FAIL, L"The entity is erased.");
}

bool isThere(const VkDbImpObject* object) {
  return object != nullptr && object->record != dxf::none && !object->isErased;
}

constexpr bool isGet(WORD flags) {
  // Callers that cannot tell a property from a method ask for both.
  return flags == DISPATCH_PROPERTYGET || flags == (DISPATCH_PROPERTYGET | DISPATCH_METHOD);
}

constexpr bool isPut(WORD flags) {
  return flags == DISPATCH_PROPERTYPUT || flags == DISPATCH_PROPERTYPUTREF
         || flags == (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
}

const ElementAccess* elementsOf(const PropertyRow* row) {
  return row == nullptr ? nullptr : row->access.elements;
}

std::size_t groupCount(const Subject& subject, const PropertyRow& row) {
  const auto groups = row.access.elements->groups;
  return groups == nullptr ? 1 : groups(subject, row);
}

std::size_t elementCount(const Subject& subject, const PropertyRow& row) {
  return row.access.elements->labels.size() * groupCount(subject, row);
}

// A drawing may hold a value in several places, of which a damaged one tells different things, and a put may round. So
// what was put is read back, and a put of a value that does not come back changes nothing.

// Runs an edit of the entity, and after one that changes something sees to the hatches that follow its shape.
template <class Edit>
void withFollowers(const Subject& target, const PropertyRow& row, Edit&& edit) {
  if (!changesShape(target, row)) return edit();
  FollowingHatches hatches(target.drawing(), target.record());
  const std::uint64_t before = target.drawing().revision();
  edit();
  if (target.drawing().revision() != before) hatches.bringAlong();
}

// Nothing for what cannot be read, which may still be written, and for objects, which are not made to be compared.
std::optional<Value> comparableNow(const Subject& target, const PropertyRow& row, const Value& put) {
  if (std::holds_alternative<OwnedDispatch>(put)) return std::nullopt;
  try {
    return row.access.get(target, row);
  } catch (const Refusal&) {
    return std::nullopt;
  }
}

// When the entity has the value already, a put changes nothing: a drawing may spell a value in another way than the host
// would, and who is told that nothing changed finds the same bytes.
void putWhole(const Subject& target, const PropertyRow& row, const Value& value) {
  const std::optional<Value> before = comparableNow(target, row, value);
  if (before && isExactlySame(value, *before)) return;
  const auto change = [&] {
    withFollowers(target, row, [&] { row.access.put(target, row, value); });
    const Value got = row.access.get(target, row);
    if (!isSameValue(row, value, got) || (before && isNumberLeft(row, *before, got))) throw notGivenBack(got);
  };
  target.drawing().atomically(std::cref(change));
}

// The coordinates of a point are computed with each other, and the largest one decides how exactly.
double scaleOfGroup(const Subject& subject, const PropertyRow& row, std::size_t element) {
  const ElementAccess& elements = *row.access.elements;
  const std::size_t first = element - element % elements.labels.size();
  double scale = 0;
  for (std::size_t i = first; i < first + elements.labels.size(); ++i)
    scale = std::max(scale, std::abs(elements.get(subject, row, i)));
  return scale;
}

void putElement(const Subject& target, const PropertyRow& row, std::size_t element, double number) {
  const ElementAccess& elements = *row.access.elements;
  const double before = elements.get(target, row, element);
  if (before == number) return;
  const auto change = [&] {
    withFollowers(target, row, [&] { elements.put(target, row, element, number); });
    const double got = elements.get(target, row, element);
    if (got == number) return;
    if (got == before || !isSameNumber(number, got, scaleOfGroup(target, row, element)))
      throw notGivenBack(Value(got));
  };
  target.drawing().atomically(std::cref(change));
}

}  // namespace

template <class Dispatch>
AutomationObject<Dispatch>::AutomationObject(const RegisteredClass& kind)
    : AutomationObject::ComObject(kind.index.account()), kind_(kind) {}

template <class Dispatch>
inline const VkDbImpObject* AutomationObject<Dispatch>::bound() const {
  const VkDbImpObject* const object = object_;
  return object != nullptr && database::ObjectTable::names(id_, *object) ? object : nullptr;
}

// As subject(), for its own functions: nearly every call begins with it.
template <class Dispatch>
inline Subject AutomationObject<Dispatch>::subjectNow(AskedPoints* asked) const {
  const VkDbImpObject* const now = bound();
  if (!isThere(now)) [[unlikely]]
    refuseMissing(id_, now);
  return Subject({now->drawing, now->record}, id_, kind(), asked);
}

template <class Dispatch>
Subject AutomationObject<Dispatch>::subject() const {
  return subjectNow();
}

// --- IDispatch --------------------------------------------------------------------------------------------------------

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 1;
  return S_OK;
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetTypeInfo(UINT index, LCID, ITypeInfo** typeInfo) {
  if (typeInfo == nullptr) return E_POINTER;
  *typeInfo = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  kind_.typeInfo->AddRef();
  *typeInfo = kind_.typeInfo;
  return S_OK;
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID,
                                                  DISPID* dispIds) {
  if (!(iid == GUID_NULL)) return unknownInterface;
  if (names == nullptr || dispIds == nullptr || (count > 0 && names[0] == nullptr)) return E_POINTER;
  if (count == 0) return E_INVALIDARG;
  if (count > 1) {
    // Parameters have no names.
    std::fill(dispIds, dispIds + count, DISPID_UNKNOWN);
    if (const PropertyRow* row = kind_.index.find(std::wstring_view(names[0]))) dispIds[0] = row->dispId;
    return DISP_E_UNKNOWNNAME;
  }
  const PropertyRow* row = kind_.index.findAgain(names[0]);
  dispIds[0] = row == nullptr ? DISPID_UNKNOWN : row->dispId;
  return row == nullptr ? DISP_E_UNKNOWNNAME : S_OK;
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::Invoke(DISPID dispId, REFIID iid, LCID, WORD flags, DISPPARAMS* params,
                                           VARIANT* result, EXCEPINFO* exception, UINT* argumentError) {
  platform::watched(isGet(flags) ? platform::Step::ReadValue : platform::Step::WriteValue);
  if (!(iid == GUID_NULL)) return unknownInterface;
  if (params == nullptr) return E_POINTER;
  const PropertyRow* row = kind_.index.find(dispId);
  if (row == nullptr) return DISP_E_MEMBERNOTFOUND;
  return guardedInvoke(exception, kind().name, [&] {
    if (isGet(flags)) return get(*row, *params, result);
    if (isPut(flags)) return put(*row, flags, *params, argumentError);
    return DISP_E_MEMBERNOTFOUND;
  });
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::get(const PropertyRow& row, const DISPPARAMS& params, VARIANT* result) {
  if (params.cArgs != 0) return DISP_E_BADPARAMCOUNT;
  if (result == nullptr) return E_POINTER;
  // A palette prepares the result for the type, and would show its zero for a value that cannot be told.
  *result = {};
  *result = toVariant(row.access.get(subjectNow(&asked_), row), row.type);
  return S_OK;
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::put(const PropertyRow& row, WORD flags, const DISPPARAMS& params,
                                        UINT* argumentError) {
  if (!row.isWritable()) return DISP_E_MEMBERNOTFOUND;
  if (flags == DISPATCH_PROPERTYPUTREF && row.type.base() != VT_DISPATCH) return DISP_E_MEMBERNOTFOUND;
  if (params.cArgs != 1) return DISP_E_BADPARAMCOUNT;
  if (params.rgvarg == nullptr) return E_POINTER;
  // The value of a put has no position, only this name.
  if (params.cNamedArgs != 1 || params.rgdispidNamedArgs == nullptr) return DISP_E_BADPARAMCOUNT;
  if (params.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT) return E_INVALIDARG;
  const Subject target = subjectNow();
  const std::optional<Value> value = fromVariant(params.rgvarg[0], row.type);
  if (!value) {
    if (argumentError != nullptr) *argumentError = 0;
    return DISP_E_TYPEMISMATCH;
  }
  requireMember(row.type, *value);
  requireChangeable(target, row);
  putWhole(target, row, *value);
  return S_OK;
}

// --- IVeltBaseObject --------------------------------------------------------------------------------------------------

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::SetObjectId(VkDbObjectId& object, VkDbObjectId, wchar_t*) {
  const std::optional<database::ObjectRef> found = database::resolve(object);
  if (!found) return E_INVALIDARG;
  if (!kind().takes(*found->drawing, found->record)) return E_INVALIDARG;
  id_ = object;
  object_ = database::ObjectTable::ofProcess().find(object);
  asked_.forget();
  return S_OK;
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetObjectId(VkDbObjectId* object) {
  if (object == nullptr) return E_POINTER;
  if (id_.isNull()) return E_UNEXPECTED;
  *object = id_;
  return S_OK;
}

// --- IOPMPropertyExtension --------------------------------------------------------------------------------------------

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetDisplayName(DISPID dispId, BSTR* name) {
  if (name == nullptr) return E_POINTER;
  const PropertyRow* row = kind_.index.find(dispId);
  return row == nullptr ? DISP_E_MEMBERNOTFOUND : giveText(row->label, name);
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::Editable(DISPID dispId, BOOL* editable) {
  platform::watched(platform::Step::Other);
  if (editable == nullptr) return E_POINTER;
  const PropertyRow* row = kind_.index.find(dispId);
  if (row == nullptr) return DISP_E_MEMBERNOTFOUND;
  const Writability& writability = row->writability;
  if (writability.obstacle == nullptr || !writability.obstacleShows) {
    *editable = row->isWritable() ? 1 : 0;
    return S_OK;
  }
  return guarded([&] {
    *editable = writability.obstacle->reasonFor(subjectNow()) == nullptr ? 1 : 0;
    return S_OK;
  });
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::ShowProperty(DISPID dispId, BOOL* show) {
  if (show == nullptr) return E_POINTER;
  const PropertyRow* row = kind_.index.find(dispId);
  if (row == nullptr) return DISP_E_MEMBERNOTFOUND;
  return guarded([&] {
    const bool always = row->shownFor == everyVariant || kind().variant == nullptr;
    *show = always || (row->shownFor & variant(kind().variant(subjectNow()))) != 0 ? 1 : 0;
    return S_OK;
  });
}

// --- IOPMPropertyExpander ---------------------------------------------------------------------------------------------

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetElementValue(DISPID dispId, DWORD cookie, VARIANT* value) {
  platform::watched(platform::Step::ReadValue);
  if (value == nullptr) return E_POINTER;
  const PropertyRow* row = kind_.index.find(dispId);
  const ElementAccess* elements = elementsOf(row);
  if (elements == nullptr) return row == nullptr ? DISP_E_MEMBERNOTFOUND : E_NOTIMPL;
  return guarded([&] {
    const Subject source = subjectNow(&asked_);
    if (cookie >= elementCount(source, *row)) return E_INVALIDARG;
    *value = holders::wholeVariant(VT_R8, std::bit_cast<std::uint64_t>(elements->get(source, *row, cookie)));
    return S_OK;
  });
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::SetElementValue(DISPID dispId, DWORD cookie, VARIANT value) {
  platform::watched(platform::Step::WriteValue);
  const PropertyRow* row = kind_.index.find(dispId);
  const ElementAccess* elements = elementsOf(row);
  if (elements == nullptr) return row == nullptr ? DISP_E_MEMBERNOTFOUND : E_NOTIMPL;
  if (!row->isWritable()) return E_ACCESSDENIED;
  return guarded([&] {
    const Subject target = subjectNow();
    if (cookie >= elementCount(target, *row)) return E_INVALIDARG;
    const std::optional<Value> number = fromVariant(value, VT_R8);
    if (!number) return DISP_E_TYPEMISMATCH;
    try {
      requireChangeable(target, *row);
      putElement(target, *row, cookie, std::get<double>(*number));
    } catch (const Refusal& refusal) {
      RefusalLog::note(target.id(), refusal.text());
      throw;
    }
    return S_OK;
  });
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetElementStrings(DISPID dispId, CALPOLESTR* strings, CADWORD* cookies) {
  if (strings == nullptr || cookies == nullptr) return E_POINTER;
  const ClassIndex::Entry* const entry = kind_.index.findEntry(dispId);
  if (entry == nullptr) return DISP_E_MEMBERNOTFOUND;
  const ElementAccess* const elements = elementsOf(entry->row);
  if (elements == nullptr) return E_NOTIMPL;
  platform::SmallBlocks* const kept = platform::blocksAtOnce();
  if (elements->groups == nullptr && kept != nullptr && isThere(bound())
      && entry->labels.giveAtOnce(*kept, *strings, *cookies)) {
    return S_OK;
  }
  return giveStrings(*entry, *strings, *cookies);
}

// Not inline, so that giving them at once needs next to no registers.
template <class Dispatch>
[[gnu::noinline]] HRESULT AutomationObject<Dispatch>::giveStrings(const ClassIndex::Entry& entry,
                                                                  CALPOLESTR& strings,
                                                                  CADWORD& cookies) const {
  return guarded([&] { return entry.labels.give(groupCount(subjectNow(), *entry.row), strings, cookies); });
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetElementGrouping(DISPID dispId, SHORT* grouping) {
  if (grouping == nullptr) return E_POINTER;
  const PropertyRow* row = kind_.index.find(dispId);
  const ElementAccess* elements = elementsOf(row);
  if (elements == nullptr) return row == nullptr ? DISP_E_MEMBERNOTFOUND : E_NOTIMPL;
  *grouping = elements->grouping;
  return S_OK;
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetGroupCount(DISPID dispId, long* groups) {
  if (groups == nullptr) return E_POINTER;
  const PropertyRow* row = kind_.index.find(dispId);
  const ElementAccess* elements = elementsOf(row);
  if (elements == nullptr) return row == nullptr ? DISP_E_MEMBERNOTFOUND : E_NOTIMPL;
  return guarded([&] {
    *groups = static_cast<long>(groupCount(subjectNow(), *row));
    return S_OK;
  });
}

// --- ICategorizeProperties --------------------------------------------------------------------------------------------

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::MapPropertyToCategory(DISPID dispId, PROPCAT* category) {
  if (category == nullptr) return E_POINTER;
  const PropertyRow* row = kind_.index.find(dispId);
  if (row == nullptr) return DISP_E_MEMBERNOTFOUND;
  *category = row->category.number;
  return S_OK;
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetCategoryName(PROPCAT category, LCID, BSTR* name) {
  if (name == nullptr) return E_POINTER;
  const wchar_t* text = categoryName(category);
  return text == nullptr ? E_INVALIDARG : giveText(text, name);
}

// --- IPerPropertyBrowsing ---------------------------------------------------------------------------------------------

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetDisplayString(DISPID dispId, BSTR* text) {
  if (text == nullptr) return E_POINTER;
  return kind_.index.find(dispId) == nullptr ? DISP_E_MEMBERNOTFOUND : E_NOTIMPL;
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::MapPropertyToPage(DISPID dispId, CLSID* page) {
  if (page == nullptr) return E_POINTER;
  return kind_.index.find(dispId) == nullptr ? DISP_E_MEMBERNOTFOUND : E_NOTIMPL;
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetPredefinedStrings(DISPID dispId, CALPOLESTR* strings,
                                                         CADWORD* cookies) {
  if (strings == nullptr || cookies == nullptr) return E_POINTER;
  const PropertyRow* row = kind_.index.find(dispId);
  if (row == nullptr) return DISP_E_MEMBERNOTFOUND;
  if (row->choices == Choices::None) return E_NOTIMPL;
  return guarded([&] {
    const Subject source = subjectNow();
    const std::size_t count = choiceCount(source, *row);
    CountedStrings list(count);
    for (std::size_t i = 0; i < count; ++i)
      list.add(choiceLabel(source, *row, i));
    return list.giveTo(*strings, *cookies);
  });
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetPredefinedValue(DISPID dispId, DWORD cookie, VARIANT* value) {
  if (value == nullptr) return E_POINTER;
  const PropertyRow* row = kind_.index.find(dispId);
  if (row == nullptr) return DISP_E_MEMBERNOTFOUND;
  // Not E_NOTIMPL, which a caller takes as "number the texts instead".
  if (row->choices == Choices::None) return E_INVALIDARG;
  return guarded([&] {
    const Subject source = subjectNow();
    if (cookie >= choiceCount(source, *row)) return E_INVALIDARG;
    *value = toVariant(choiceValue(source, *row, cookie), VT_VARIANT);
    return S_OK;
  });
}

// --- IVkPiPropertyDisplay ---------------------------------------------------------------------------------------------

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetCustomPropertyCtrl(VARIANT, LCID, BSTR* control) {
  return control == nullptr ? E_POINTER : E_NOTIMPL;
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetPropertyColor(VARIANT, ULONG* color) {
  return color == nullptr ? E_POINTER : E_NOTIMPL;
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetPropertyTextColor(VARIANT, ULONG* color) {
  return color == nullptr ? E_POINTER : E_NOTIMPL;
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::IsFullView(VARIANT, BOOL* full) {
  return full == nullptr ? E_POINTER : E_NOTIMPL;
}

template <class Dispatch>
HRESULT AutomationObject<Dispatch>::GetPropertyWeight(VARIANT property, long* weight) {
  if (weight == nullptr) return E_POINTER;
  if (property.vt != VT_I4) return DISP_E_TYPEMISMATCH;
  const PropertyRow* row = kind_.index.find(property.lVal);
  if (row == nullptr) return DISP_E_MEMBERNOTFOUND;
  *weight = row->weight;
  return S_OK;
}

template class AutomationObject<IDispatch>;
template class AutomationObject<IVeltHatch>;

}  // namespace velt::automation
