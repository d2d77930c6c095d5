#include "hostcheck/HostCheck.h"

#include <algorithm>
#include <exception>
#include <map>

#include "holders/InterfaceHolder.h"
#include "host/automation/IdValues.h"
#include "hostcheck/Checks.h"

using namespace velt::holders;

namespace velt::hostcheck {

namespace {

std::string narrowName(const Property& property) {
  return narrow(property.name.c_str());
}

// Objects of one class id are shown with the properties of the first one that the layer has met. (Hatches keep a list
// for each variant, and are left out.)
void checkSharedList(Findings& findings, const EntityClass& entity, const std::vector<Property>& properties,
                     std::map<std::string, std::vector<Property>>& lists) {
  const std::string key(reinterpret_cast<const char*>(&entity.clsid), sizeof entity.clsid);
  const auto [known, isNew] = lists.emplace(key, properties);
  if (isNew) return;
  const auto difference =
      std::mismatch(known->second.begin(), known->second.end(), properties.begin(), properties.end());
  const bool isSame = difference.first == known->second.end() && difference.second == properties.end();
  findings.expect(
      isSame, "class-shares-list", "the properties of the first entity of this class",
      difference.second != properties.end() ? "another one: " + narrowName(*difference.second) : "fewer");
}

bool isHatch(const EntityClass& entity) {
  return entity.clsid == velt::CLSID_VeltHatch;
}

void checkOneEntity(Findings& findings, EntityClass& entity,
                    std::map<std::string, std::vector<Property>>& lists) {
  const std::string subject = "entity " + std::to_string(entity.oldId);
  findings.about(subject);
  if (!checkEntity(findings, entity)) return;
  const auto object = InterfaceHolder<IUnknown>::owning(checkObject(findings, entity));
  if (!object) return;
  InterfaceHolder<IDispatch> dispatch;
  if (FAILED(query(object.get(), IID_IDispatch, dispatch))) return;
  const std::vector<Property> properties = checkTypeInformation(findings, *dispatch.get());
  if (!isHatch(entity)) checkSharedList(findings, entity, properties, lists);
  for (const Property& property : properties) {
    findings.about(subject + ", property " + narrowName(property));
    checkProperty(findings, *object.get(), *dispatch.get(), property);
    checkChoices(findings, *object.get(), property);
    checkElements(findings, *object.get(), property);
  }
  findings.about(subject);
  checkFailures(findings, *object.get(), *dispatch.get());
}

}  // namespace

void checkAll(Report& report, const HostFunctions& host, std::span<const long> oldIds) {
  Findings findings(report);
  checkFunctions(findings, host);
  checkMadeUpIds(findings, oldIds);
  checkUnknownClass(findings);
  std::vector<EntityClass> entities;
  std::map<std::string, std::vector<Property>> lists;
  for (const long oldId : oldIds) {
    EntityClass& entity = entities.emplace_back(EntityClass{oldId});
    checkOneEntity(findings, entity, lists);
  }
  checkLayers(findings, entities);
  checkClassIds(findings, entities);
  findings.finish();
}

}  // namespace velt::hostcheck

void veltCheckHost(const long* oldIds, std::size_t count, velt::hostcheck::Report* report) {
  try {
    velt::hostcheck::checkAll(*report, {}, {oldIds, count});
  } catch (const std::exception& error) {
    velt::hostcheck::Findings(*report).expect(false, "exceptions", "a check that comes to its end",
                                              error.what());
  } catch (...) {
    velt::hostcheck::Findings(*report).expect(false, "exceptions", "a check that comes to its end",
                                              "an exception");
  }
}
