// The static rows of one entity, and the cache that saves walking the type information again.

#include <cstring>
#include <string>
#include <unordered_set>

#include "errors/Guard.h"
#include "errors/Messages.h"
#include "holders/CountedStringsHolder.h"
#include "holders/InterfaceHolder.h"
#include "host/automation/IVeltHatch.h"
#include "host/com/IPerPropertyBrowsing.h"
#include "host/palette/IOPMPropertyExtension.h"
#include "propdata/VeltPropData.h"
#include "propdata/selection/Cores.h"
#include "propdata/support/Lists.h"
#include "propdata/typeinfo/Cores.h"

using namespace velt::holders;
using namespace velt::propdata;
using velt::errors::failWith;
using velt::errors::guarded;
namespace message = velt::errors::message;

namespace {

constexpr int noHatchVariant = -1;
constexpr int categoryBeforeTheFirst = -12;

// Hatches of different kinds show different rows, so each kind has a list of its own in the cache.
int hatchVariantOf(const VeltPropData& entry) {
  INT variant = noHatchVariant;
  if (entry.clsid == CLSID_VeltHatch && entry.pUnknown != nullptr) {
    void* hatch = nullptr;
    // QUIRK(hatch_interface_not_released): neither is the query's result looked at, nor the interface released:
    // hosts count on the reference that stays with every hatch that was asked.
    [[maybe_unused]] const HRESULT queried = entry.pUnknown->QueryInterface(IID_IVeltHatch, &hatch);
    if (hatch != nullptr) static_cast<IVeltHatch*>(hatch)->get_PropertyVariant(&variant);
  }
  return variant;
}

// Yes or no, whatever byte the host writes.
bool askEditable(IOPMPropertyExtension& extension, DISPID dispId, bool before) {
  BOOL editable = before ? 1 : 0;
  // QUIRK(editable_result_unexamined): an object without an opinion refuses the call, and the flag stays as it went in.
  [[maybe_unused]] const HRESULT answered = extension.Editable(dispId, &editable);
  return editable != 0;
}

// The flag stays as it is for an object that has no extension, too.
bool askEditable(IUnknown* object, DISPID dispId, bool before) {
  InterfaceHolder<IOPMPropertyExtension> extension;
  return SUCCEEDED(query(object, IID_IOPMPropertyExtension, extension))
             ? askEditable(*extension.get(), dispId, before)
             : before;
}

bool offersChoices(IPerPropertyBrowsing& browsing, DISPID dispId) {
  CountedStringsHolder choices;
  return handedOver(browsing.GetPredefinedStrings(dispId, choices.putStrings(), choices.putCookies()),
                    choices);
}

using SetterNames = std::unordered_set<std::wstring_view>;

SetterNames namesIn(const CStringArray& setters) {
  SetterNames names;
  for (long i = 0; i < setters.GetSize(); ++i)
    names.insert(setters.GetAt(i));
  return names;
}

// Category id and name go in with the previous row's and keep its values where nothing is answered.
bool completeRow(VeltPropData& entry, PROPINFO& prop, const SetterNames& setters, int& categoryId,
                 CStdStr<wchar_t>& categoryName, CStdStr<wchar_t>& errorText) {
  {
    InterfaceHolder<IOPMPropertyExtension> extension;
    if (FAILED(query(entry.pUnknown, IID_IOPMPropertyExtension, extension)))
      return failWith(errorText, message::noPropertyExtension);
    prop.isEditable = false;
    if (setters.contains(prop.name.str())) prop.isWritable = true;
    if (prop.isWritable) prop.isEditable = askEditable(*extension.get(), prop.dispId, true);
  }

  if (!findCategory(entry, prop.dispId, categoryId, categoryName, errorText)) return false;
  prop.categoryId = categoryId;
  prop.categoryName = categoryName;

  InterfaceHolder<IPerPropertyBrowsing> browsing;
  if (FAILED(query(entry.pUnknown, IID_IPerPropertyBrowsing, browsing))) {
    // QUIRK(message_1018_left_behind): not fatal; palettes look for this text after a query that succeeded.
    errorText = velt::errors::loadMessage(message::noPropertyBrowsing);
    prop.hasChoices = false;
  } else {
    prop.hasChoices = offersChoices(*browsing.get(), prop.dispId);
  }
  return true;
}

bool walk(VeltPropData& entry, TqVector<PROPINFO>& list, CStdStr<wchar_t>& errorText) {
  CStringArray setterNames;
  setterNames.RemoveAll();
  setterNames.FreeExtra();
  mustClear(list);
  if (!listProperties(entry, list, setterNames, errorText)) return false;
  if (list.isEmpty()) return false;

  const SetterNames setters = namesIn(setterNames);
  int categoryId = categoryBeforeTheFirst;
  CStdStr<wchar_t> categoryName;
  for (PROPINFO& prop : writable(list)) {
    if (!completeRow(entry, prop, setters, categoryId, categoryName, errorText)) return false;
  }
  return true;
}

void putOwnFields(TqVector<PROPINFO>& list, const VeltPropData& entry) {
  for (PROPINFO& prop : writable(list)) {
    prop.clsid = entry.clsid;
    prop.pDispatch = entry.pDispatch;
    prop.objectId.setFromOldId(entry.oldId);
    if (prop.isWritable) prop.isEditable = askEditable(entry.pUnknown, prop.dispId, prop.isEditable);
  }
}

}  // namespace

namespace velt::propdata {

bool harvest(VeltPropData* entry, TqVector<PROPINFO>& list, CStdStr<wchar_t>& errorText) {
  if (entry == nullptr) return false;
  const CLSIDMemString key(entry->clsid, hatchVariantOf(*entry));
  PropertyListCache& cache = propertyListCache();
  if (const auto hit = cache.find(key); hit != cache.end()) {
    list = hit->second;
    putOwnFields(list, *entry);
    return true;
  }
  if (!walk(*entry, list, errorText)) return false;
  cache.emplace(key, list);
  return true;
}

bool SelectionHarvest::add(VeltPropData* entry, CStdStr<wchar_t>& errorText) {
  if (entry == nullptr) return false;
  Known& known = knownOf({entry->clsid, hatchVariantOf(*entry)});
  PropertyListCache& cache = propertyListCache();
  if (const auto hit = cache.find(known.key); hit != cache.end()) {
    if (known.rows == nullptr || !known.rows->are(hit->second)) known.rows = &lists_.sharedRows(hit->second);
    SharedRows& rows = *known.rows;
    const std::size_t added = lists_.count();
    lists_.add(rows, *entry);
    for (const std::uint32_t place : rows.writable()) {
      const PROPINFO& row = rows.rows()[place];
      const bool isEditable = askEditable(entry->pUnknown, row.dispId, row.isEditable);
      if (isEditable != row.isEditable) lists_.setEditable(added, place, isEditable);
    }
    return true;
  }
  TqVector<PROPINFO> list;
  if (!walk(*entry, list, errorText)) return false;
  cache.emplace(known.key, list);
  lists_.add(lists_.sharedRows(list), *entry);
  return true;
}

SelectionHarvest::Known& SelectionHarvest::knownOf(const Class& of) {
  auto*& recent = recent_[Hash()(of) >> 58];
  if (recent == nullptr || !(recent->first == of)) {
    auto known = known_.find(of);
    if (known == known_.end()) known = known_.emplace(of, Known{{of.clsid, of.hatchVariant}}).first;
    recent = &*known;
  }
  return recent->second;
}

std::size_t SelectionHarvest::Hash::operator()(const Class& of) const {
  std::uint64_t halves[2];
  static_assert(sizeof halves == sizeof of.clsid);
  std::memcpy(halves, &of.clsid, sizeof halves);
  return (halves[0] ^ halves[1] ^ static_cast<std::uint32_t>(of.hatchVariant)) * 0x9E3779B97F4A7C15ULL;
}

}  // namespace velt::propdata

bool GetSingleEntPropInfo(VeltPropData* entry, TqVector<PROPINFO>& list, CStdStr<wchar_t>& errorText,
                          [[maybe_unused]] bool& typeFlag) {
  return guarded(false, errorText, [&] { return harvest(entry, list, errorText); });
}

void resetObjectInfo(TqVector<PROPINFO>& list, const VeltPropData* entry) {
  guarded([&] { putOwnFields(list, *entry); });
}
