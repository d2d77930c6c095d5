// Writing a value to dynamic properties, in both generations of the interface.

#include <utility>

#include "holders/InterfaceHolder.h"
#include "host/com/IDispatch.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "propdata/VeltPropData.h"
#include "propdata/dynamic/EntityId.h"

using namespace velt::holders;
using namespace velt::propdata;

namespace {

enum Written : int { nothingToWrite = 0, allVisited = 1, noNewerInterface = 2 };

bool isComplete(const DispatchDynPropSourceNode& node) {
  return node.pDispatch != nullptr && node.pDynamicProperty != nullptr;
}

}  // namespace

int setDynPropSourcesPropValue(const PROPINFO& property, VARIANT& value) {
  if (property.dynSources.isEmpty()) return nothingToWrite;
  for (const DispatchDynPropSourceNode& node : property.dynSources) {
    if (!isComplete(node)) continue;
    InterfaceHolder<IDynamicProperty2> newer;
    const HRESULT queried = query(node.pDynamicProperty, IID_IDynamicProperty2, newer);
    // QUIRK(double_write): the older writer then visits every node again, those written here too.
    if (queried == E_NOINTERFACE) return noNewerInterface;
    if (FAILED(queried)) continue;
    InterfaceHolder<IDispatch> entity;
    if (FAILED(query(node.pDispatch, IID_IDispatch, entity))) continue;
    // QUIRK(dynamic_write_result_unexamined): plug-ins refuse the value for single entities and expect the others to be
    // written.
    [[maybe_unused]] const HRESULT set = newer->SetCurrentValueData(entity.get(), value);
  }
  return allVisited;
}

int setDynPropSourcesPropValueDefault(const PROPINFO& property, VARIANT& value) {
  if (property.dynSources.isEmpty()) return nothingToWrite;
  for (const DispatchDynPropSourceNode& node : property.dynSources) {
    if (!isComplete(node)) continue;
    InterfaceHolder<IDynamicProperty> older;
    if (FAILED(query(node.pDynamicProperty, IID_IDynamicProperty, older))) continue;
    InterfaceHolder<IDispatch> entity;
    if (FAILED(query(node.pDispatch, IID_IDispatch, entity))) continue;
    const VkDbObjectId id = entityIdOf(entity.get());
    if (id.isNull()) continue;
    [[maybe_unused]] const HRESULT set = older->SetCurrentValueData(id.asOldId(), value);
  }
  return allVisited;
}
