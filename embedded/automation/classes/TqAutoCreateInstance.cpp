#include "host/automation/TqAutoCreateInstance.h"

#include "embedded/automation/hatches/HatchObject.h"
#include "embedded/automation/model/Guard.h"
#include "embedded/platform/Watch.h"

namespace velt::automation {
namespace {

template <class Object>
HRESULT create(const RegisteredClass& kind, REFIID iid, void** object) {
  Object* made = com::makeObject<Object>(kind);
  if (made == nullptr) return E_OUTOFMEMORY;
  const HRESULT result = made->QueryInterface(iid, object);
  made->Release();
  return result;
}

HRESULT createInstance(REFCLSID clsid, REFIID iid, void** object) {
  const RegisteredClass* kind = ClassRegistry::ofHost().find(clsid);
  if (kind == nullptr) return REGDB_E_CLASSNOTREG;
  return clsid == CLSID_VeltHatch ? create<HatchObject>(*kind, iid, object)
                                  : create<EntityObject>(*kind, iid, object);
}

}  // namespace
}  // namespace velt::automation

HRESULT TqAutoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD, REFIID iid, void** object) {
  velt::platform::watched(velt::platform::Step::MakeObject);
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  return velt::automation::guarded([&] { return velt::automation::createInstance(clsid, iid, object); });
}
