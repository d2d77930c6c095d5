#include "bench/Floor.h"

#include <cwchar>

#include "holders/WholeVariant.h"
#include "host/automation/IVeltBaseObject.h"
#include "host/automation/IVeltHatch.h"
#include "host/automation/IVeltHyperlinks.h"
#include "host/automation/IVeltVkCmColor.h"
#include "host/automation/IVkPiPropertyDisplay.h"
#include "host/com/ComRuntime.h"
#include "host/com/IPerPropertyBrowsing.h"
#include "host/database/OpenObject.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "host/palette/IOPMPropertyExtension.h"

namespace velt::bench {

namespace {

// Null when the object does not offer the interface.
template <class Interface>
Interface* query(IUnknown* object, REFIID iid) {
  void* found = nullptr;
  if (FAILED(object->QueryInterface(iid, &found))) return nullptr;
  return static_cast<Interface*>(found);
}

struct CountedStrings {
  CALPOLESTR strings{};
  CADWORD cookies{};

  void free() const {
    for (ULONG i = 0; i < strings.cElems; ++i)
      SysFreeString(strings.pElems[i]);
    CoTaskMemFree(strings.pElems);
    CoTaskMemFree(cookies.pElems);
  }
};

void readWeight(IDispatch* dispatch, DISPID dispId) {
  auto* const display = query<IVkPiPropertyDisplay>(dispatch, IID_IVkPiPropertyDisplay);
  if (display == nullptr) return;
  long weight = 0;
  display->GetPropertyWeight(holders::wholeVariant(VT_I4, static_cast<std::uint32_t>(dispId)), &weight);
  display->Release();
}

void probeColor(const VARIANT& value) {
  if (value.vt != VT_DISPATCH || value.pdispVal == nullptr) return;
  auto* const color = query<IVeltVkCmColor>(value.pdispVal, IID_IVeltVkCmColor);
  if (color != nullptr) color->Release();
}

void readValue(IDispatch* dispatch, const FloorPlan::Read& read, VARIANT& value) {
  readWeight(dispatch, read.dispId);
  value.vt = read.type;
  DISPPARAMS noParameters{};
  EXCEPINFO exception{};
  UINT argumentError = 0;
  dispatch->Invoke(read.dispId, GUID_NULL, GetUserDefaultLangID(), DISPATCH_PROPERTYGET, &noParameters,
                   &value, &exception, &argumentError);
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrDescription);
  SysFreeString(exception.bstrHelpFile);
  if (read.probesColor) probeColor(value);
}

// Answers how many values were stored.
std::uint32_t readElements(IDispatch* dispatch, DISPID dispId, VARIANT* values) {
  readWeight(dispatch, dispId);
  auto* const expander = query<IOPMPropertyExpander>(dispatch, IID_IOPMPropertyExpander);
  CountedStrings elements;
  expander->GetElementStrings(dispId, &elements.strings, &elements.cookies);
  SHORT grouping = 0;
  expander->GetElementGrouping(dispId, &grouping);
  std::uint32_t stored = 0;
  if (grouping != 0) {
    long groups = 0;
    expander->GetGroupCount(dispId, &groups);
    values[stored].vt = VT_I4;
    values[stored].lVal = 0;
    ++stored;
  }
  for (ULONG i = 0; i < elements.cookies.cElems; ++i)
    expander->GetElementValue(dispId, elements.cookies.pElems[i], &values[stored++]);
  expander->Release();
  elements.free();
  return stored;
}

void countElements(IDispatch* dispatch, const std::wstring& name) {
  // GetIDsOfNames takes no pointer to const, although it only reads.
  LPOLESTR names = const_cast<LPOLESTR>(name.c_str());
  DISPID dispId = 0;
  dispatch->GetIDsOfNames(GUID_NULL, &names, 1, LOCALE_SYSTEM_DEFAULT, &dispId);
  auto* const expander = query<IOPMPropertyExpander>(dispatch, IID_IOPMPropertyExpander);
  CountedStrings elements;
  expander->GetElementStrings(dispId, &elements.strings, &elements.cookies);
  expander->Release();
  elements.free();
}

bool readColor(const VARIANT& value, VkCmColor& color) {
  auto* const object = query<IVeltVkCmColor>(value.pdispVal, IID_IVeltVkCmColor);
  if (object == nullptr) return false;
  LONG entityColor = 0;
  BSTR colorName = nullptr;
  BSTR bookName = nullptr;
  object->get_EntityColor(&entityColor);
  object->get_ColorName(&colorName);
  object->get_BookName(&bookName);
  color.setColor(static_cast<std::uint32_t>(entityColor));
  color.setNames(colorName, bookName);
  SysFreeString(bookName);
  SysFreeString(colorName);
  object->Release();
  return true;
}

void readFirstUrl(IVeltHyperlinks& hyperlinks, BSTR& url) {
  IVeltHyperlink* hyperlink = nullptr;
  if (FAILED(hyperlinks.Item(0, &hyperlink)) || hyperlink == nullptr) return;
  hyperlink->get_URL(&url);
  hyperlink->Release();
}

void compareHyperlinks(IDispatch* a, IDispatch* b) {
  auto* const ofA = query<IVeltHyperlinks>(a, IID_IVeltHyperlinks);
  auto* const ofB = query<IVeltHyperlinks>(b, IID_IVeltHyperlinks);
  if (ofA == nullptr || ofB == nullptr) return;
  BSTR urlOfA = nullptr;
  BSTR urlOfB = nullptr;
  readFirstUrl(*ofA, urlOfA);
  readFirstUrl(*ofB, urlOfB);
  if (urlOfB != nullptr) SysFreeString(urlOfB);
  if (urlOfA != nullptr) SysFreeString(urlOfA);
  ofB->Release();
  ofA->Release();
}

void readLayerColor(VkDbObjectId id, VkCmColor& color) {
  VkDbEntity* entity = nullptr;
  vkdbOpenObject(entity, id, VkDb::kForRead);
  if (entity == nullptr) return;
  const VkDbObjectId layerId = entity->layerId();
  entity->close();
  VkDbLayerTableRecord* layer = nullptr;
  vkdbOpenObject<VkDbLayerTableRecord>(layer, layerId, VkDb::kForRead, false);
  if (layer == nullptr) return;
  color = layer->color();
  layer->close();
}

// As in the layer, what is asked next depends on the answers.
void compareObjects(const VARIANT& a, VkDbObjectId idOfA, const VARIANT& b, VkDbObjectId idOfB,
                    bool areHyperlinks) {
  {
    VkCmColor colorOfA;
    VkCmColor colorOfB;
    const bool isColorA = readColor(a, colorOfA);
    const bool isColorB = readColor(b, colorOfB);
    if (!isColorA || !isColorB) {
      compareHyperlinks(a.pdispVal, b.pdispVal);
      if (areHyperlinks) return;
    } else if (colorOfA != colorOfB) {
      return;
    }
  }
  VkCmColor color;
  if (!readColor(a, color) || !color.isByLayer()) return;
  VkCmColor layerColorOfA;
  VkCmColor layerColorOfB;
  readLayerColor(idOfA, layerColorOfA);
  readLayerColor(idOfB, layerColorOfB);
  [[maybe_unused]] const bool differ = layerColorOfA != layerColorOfB;
}

// A selection that does not begin with a block reference has no dynamic rows.
void askForDynamicBlock(IDispatch* dispatch) {
  auto* const baseObject = query<IVeltBaseObject>(dispatch, IID_IVeltBaseObject);
  VkDbObjectId id;
  baseObject->GetObjectId(&id);
  baseObject->Release();
  const VkDbObjectPointer<VkDbBlockReference> reference(id, VkDb::kForRead);
}

}  // namespace

Floor::Floor(Selection& selection) : plan_(planFor(selection)) {
  std::uint32_t firstValue = 0;
  const TqVector<VeltPropData*>& entries = selection.entries();
  for (std::uint32_t k = 0; k < entries.length(); ++k) {
    const VeltPropData& data = *entries[k];
    VkDbObjectId id;
    id.setFromOldId(data.oldId);
    const std::uint32_t kind = plan_.kindOf[k];
    entities_.push_back({data.pUnknown, data.pDispatch, id, kind, firstValue, plan_.kinds[kind].rows});
    firstValue += plan_.recordsOf[k];
  }
  values_.resize(firstValue);
  firstValues_.resize(plan_.firstValues);
}

void Floor::askEditable() {
  for (const Entity& entity : entities_) {
    const FloorPlan::Kind& kind = plan_.kinds[entity.kind];
    if (kind.isHatch) {
      INT variant = -1;
      query<IVeltHatch>(entity.object, IID_IVeltHatch)->get_PropertyVariant(&variant);
    }
    for (const DISPID dispId : kind.writable) {
      auto* const extension = query<IOPMPropertyExtension>(entity.object, IID_IOPMPropertyExtension);
      BOOL editable = 0;
      extension->Editable(dispId, &editable);
      extension->Release();
    }
  }
}

void Floor::readFirst() {
  VARIANT* value = firstValues_.data();
  IDispatch* const dispatch = entities_.front().dispatch;
  for (const FloorPlan::Read& read : plan_.first) {
    if (read.expands) {
      value += readElements(dispatch, read.dispId, value);
    } else {
      readValue(dispatch, read, *value++);
    }
  }
}

void Floor::search(const FloorPlan::Search& search) {
  const Entity& first = entities_.front();
  const VARIANT& wanted = firstValues_[search.firstValue];
  for (std::uint32_t k = 1; k <= search.entities; ++k) {
    Entity& entity = entities_[k];
    const FloorPlan::Step& step = search.ofKind[entity.kind];
    if (step.read.expands) {
      if (k > search.expandedBefore) {
        entity.records +=
            readElements(entity.dispatch, step.read.dispId, &values_[entity.firstValue + entity.records]);
      }
      if (!step.compares) continue;
      countElements(first.dispatch, search.name);
      countElements(entity.dispatch, search.name);
    } else {
      VARIANT& value = values_[entity.firstValue + step.read.place];
      readValue(entity.dispatch, step.read, value);
      if (step.compares && wanted.vt == VT_DISPATCH && value.vt == VT_DISPATCH) {
        compareObjects(wanted, first.id, value, entity.id, search.isHyperlink);
      }
    }
  }
}

void Floor::listChoices(DISPID dispId) {
  auto* const browsing = query<IPerPropertyBrowsing>(entities_.front().dispatch, IID_IPerPropertyBrowsing);
  CountedStrings choices;
  browsing->GetPredefinedStrings(dispId, &choices.strings, &choices.cookies);
  for (ULONG i = 0; i < choices.strings.cElems; ++i) {
    VARIANT value{};
    browsing->GetPredefinedValue(dispId, i, &value);
    if (value.vt == VT_BSTR) VariantClear(&value);
  }
  choices.free();
  browsing->Release();
}

void Floor::clearValues() {
  for (Entity& entity : entities_) {
    for (std::uint32_t i = 0; i < entity.records; ++i)
      VariantClear(&values_[entity.firstValue + i]);
    entity.records = plan_.kinds[entity.kind].rows;
  }
}

void Floor::run() {
  askForDynamicBlock(entities_.front().dispatch);
  askEditable();
  readFirst();
  for (const FloorPlan::Search& each : plan_.searches)
    search(each);
  for (const DISPID dispId : plan_.withChoices)
    listChoices(dispId);
  clearValues();
  for (const std::uint32_t value : plan_.inResult)
    VariantClear(&firstValues_[value]);
}

void Floor::clearLeftovers() {
  for (VARIANT& value : firstValues_)
    VariantClear(&value);
}

}  // namespace velt::bench
