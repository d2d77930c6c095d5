// Setting a selection up and tearing it down.

#include <utility>

#include "errors/Guard.h"
#include "errors/Messages.h"
#include "holders/InterfaceHolder.h"
#include "holders/OpenObjectHolder.h"
#include "host/automation/IVeltBaseObject.h"
#include "host/automation/TqAutoCreateInstance.h"
#include "propdata/VeltPropData.h"

using namespace velt::holders;
using velt::errors::failWith;
using velt::errors::guarded;
namespace message = velt::errors::message;

namespace {

template <class Interface>
void releaseAndClear(Interface*& pointer) {
  if (Interface* const held = std::exchange(pointer, nullptr)) held->Release();
}

bool createObject(VeltPropData& entry, CStdStr<wchar_t>& errorText) {
  entry.pUnknown = nullptr;
  entry.pDispatch = nullptr;
  void* created = nullptr;
  const HRESULT creation =
      TqAutoCreateInstance(entry.clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &created);
  if (FAILED(creation) || created == nullptr) return failWith(errorText, message::instanceCreation);
  entry.pUnknown = static_cast<IUnknown*>(created);

  InterfaceHolder<IDispatch> dispatch;
  if (FAILED(query(entry.pUnknown, IID_IDispatch, dispatch))) {
    releaseAndClear(entry.pUnknown);
    return failWith(errorText, message::noDispatch);
  }
  entry.pDispatch = dispatch.detach();

  InterfaceHolder<IVeltBaseObject> baseObject;
  if (FAILED(query(entry.pUnknown, IID_IVeltBaseObject, baseObject))) {
    // QUIRK(dispatch_kept_without_base_object): pDispatch stays in the entry; the caller's teardown releases it.
    releaseAndClear(entry.pUnknown);
    return failWith(errorText, message::noBaseObject);
  }
  VkDbObjectId id;
  id.setFromOldId(entry.oldId);
  // QUIRK(binding_result_unexamined): an object that refuses its entity shows what it can without it.
  [[maybe_unused]] const HRESULT binding = baseObject->SetObjectId(id, VkDbObjectId::kNull, nullptr);
  return true;
}

bool readClassId(GUID& clsid, long oldId) {
  VkDbObjectId id;
  id.setFromOldId(oldId);
  OpenObjectHolder<VkDbEntity> entity;
  if (!handedOver(vkdbOpenVkDbEntity(*entity.put(), id, VkDb::kForRead, false), entity) || !entity)
    return false;
  if (entity->getClassID(&clsid) != Velt::eOk) {
    clsid = entity->isKindOf(VkDbEntity::desc()) ? CLSID_VeltEntity : CLSID_VeltObject;
  }
  return true;
}

bool setUp(const TqVector<VeltPropData*>& selection, CStdStr<wchar_t>& errorText, bool& mixedClasses) {
  errorText = CStdStr<wchar_t>();
  if (FAILED(CoInitialize(nullptr))) return failWith(errorText, message::comInitialisation);
  GUID firstClass = GUID_NULL;
  for (VeltPropData* const entry : selection) {
    if (entry == nullptr) continue;
    // QUIRK(class_id_result_unexamined): an entity that cannot be opened keeps the class id that its entry came with,
    // and the object is created from that; callers that know the class fill it in.
    [[maybe_unused]] const bool hasClass = readClassId(entry->clsid, entry->oldId);
    if (firstClass == GUID_NULL) {
      firstClass = entry->clsid;
    } else if (!(firstClass == entry->clsid)) {
      mixedClasses = true;
    }
    if (!createObject(*entry, errorText)) return false;
  }
  return true;
}

void tearDown(const TqVector<VeltPropData*>& selection) {
  // QUIRK(empty_selection_stays_initialised): COM is left initialised for an empty selection, although set-up
  // initialised it. Hosts that count their own initialisations depend on it.
  if (selection.isEmpty()) return;
  for (VeltPropData* const entry : selection) {
    if (entry == nullptr) continue;
    releaseAndClear(entry->pUnknown);
    releaseAndClear(entry->pDispatch);
  }
  CoUninitialize();
}

}  // namespace

bool InitializePropData(TqVector<VeltPropData*>& selection, CStdStr<wchar_t>& errorText, bool& mixedClasses) {
  return guarded(false, errorText, [&] { return setUp(selection, errorText, mixedClasses); });
}

bool UnInitializePropData(TqVector<VeltPropData*>& selection) {
  guarded([&] { tearDown(selection); });
  return true;
}

bool GetCLSID(GUID& clsid, long oldId) {
  return guarded(false, [&] { return readClassId(clsid, oldId); });
}
