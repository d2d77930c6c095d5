// Writing a value to dynamic properties, in both generations of the interface.

#include "errors/Guard.h"
#include "holders/InterfaceHolder.h"
#include "host/com/IDispatch.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "propdata/VeltPropData.h"
#include "propdata/dynamic/Cores.h"
#include "propdata/dynamic/EntityId.h"
#include "propdata/dynamic/Refusals.h"

using namespace velt::holders;
using namespace velt::propdata;
using velt::errors::guarded;

namespace {

enum Written : int { nothingToWrite = 0, allVisited = 1, olderWriterNeeded = 2 };

bool isComplete(const DispatchDynPropSourceNode& node) {
  return node.pDispatch != nullptr && node.pDynamicProperty != nullptr;
}

// Answers what the property said when it was asked for the newer interface.
HRESULT writeNodeByNewer(const DispatchDynPropSourceNode& node, const VARIANT& value) {
  InterfaceHolder<IDynamicProperty2> newer;
  const HRESULT queried = query(node.pDynamicProperty, IID_IDynamicProperty2, newer);
  if (FAILED(queried)) return queried;
  InterfaceHolder<IDispatch> entity;
  if (FAILED(query(node.pDispatch, IID_IDispatch, entity))) return queried;
  // QUIRK(dynamic_write_result_unexamined): plug-ins refuse the value for single entities and expect the others to be
  // written.
  [[maybe_unused]] const HRESULT set = newer->SetCurrentValueData(entity.get(), value);
  return queried;
}

void writeNodeByOlder(const DispatchDynPropSourceNode& node, const VARIANT& value) {
  InterfaceHolder<IDynamicProperty> older;
  if (FAILED(query(node.pDynamicProperty, IID_IDynamicProperty, older))) return;
  InterfaceHolder<IDispatch> entity;
  if (FAILED(query(node.pDispatch, IID_IDispatch, entity))) return;
  const VkDbObjectId id = entityIdOf(entity.get());
  if (id.isNull()) return;
  [[maybe_unused]] const HRESULT set = older->SetCurrentValueData(id.asOldId(), value);
}

Written writeByNewer(const PROPINFO& property, const VARIANT& value) {
  if (property.dynSources.isEmpty()) return nothingToWrite;
  for (const DispatchDynPropSourceNode& node : property.dynSources) {
    if (!isComplete(node)) continue;
    // QUIRK(double_write): the older writer then visits every node again, those written here too.
    if (orRefused(E_FAIL, [&] { return writeNodeByNewer(node, value); }) == E_NOINTERFACE)
      return olderWriterNeeded;
  }
  return allVisited;
}

Written writeByOlder(const PROPINFO& property, const VARIANT& value) {
  if (property.dynSources.isEmpty()) return nothingToWrite;
  for (const DispatchDynPropSourceNode& node : property.dynSources) {
    if (!isComplete(node)) continue;
    orRefused([&] { writeNodeByOlder(node, value); });
  }
  return allVisited;
}

}  // namespace

namespace velt::propdata {

void writeDynamic(const PROPINFO& property, const VARIANT& value) {
  if (writeByNewer(property, value) == olderWriterNeeded) writeByOlder(property, value);
}

}  // namespace velt::propdata

int setDynPropSourcesPropValue(const PROPINFO& property, VARIANT& value) {
  return guarded(nothingToWrite, [&] { return writeByNewer(property, value); });
}

int setDynPropSourcesPropValueDefault(const PROPINFO& property, VARIANT& value) {
  return guarded(nothingToWrite, [&] { return writeByOlder(property, value); });
}
