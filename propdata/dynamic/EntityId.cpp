#include "propdata/dynamic/EntityId.h"

#include "holders/InterfaceHolder.h"
#include "host/automation/IVeltBaseObject.h"

namespace velt::propdata {

VkDbObjectId entityIdOf(IUnknown* automationObject) {
  holders::InterfaceHolder<IVeltBaseObject> baseObject;
  VkDbObjectId id;
  if (FAILED(query(automationObject, IID_IVeltBaseObject, baseObject))) return id;
  [[maybe_unused]] const HRESULT answered = baseObject->GetObjectId(&id);
  return id;
}

}  // namespace velt::propdata
