#include "propdata/dynamic/EntityId.h"

#include "host/automation/IVeltBaseObject.h"
#include "holders/InterfaceHolder.h"

namespace velt::propdata {

VkDbObjectId entityIdOf(IUnknown* automationObject) {
  ComPtr<IVeltBaseObject> baseObject;
  VkDbObjectId id;
  if (FAILED(query(automationObject, IID_IVeltBaseObject, baseObject))) return id;
  [[maybe_unused]] const HRESULT answered = baseObject->GetObjectId(&id);
  return id;
}

}  // namespace velt::propdata
