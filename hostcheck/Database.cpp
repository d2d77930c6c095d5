// What the drawing database says of entities and layers.

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

#include "host/automation/IdValues.h"
#include "host/database/OpenObject.h"
#include "hostcheck/Checks.h"

namespace velt::hostcheck {

namespace {

VkDbObjectId idOf(long oldId) {
  return VkDbObjectId().setFromOldId(oldId);
}

// How many bytes of a class id count in the key of the list of properties: those before the first zero byte.
std::size_t keyLength(const CLSID& clsid) {
  const void* const zero = std::memchr(&clsid, 0, sizeof clsid);
  return zero != nullptr ? static_cast<std::size_t>(static_cast<const char*>(zero)
                                                    - reinterpret_cast<const char*>(&clsid))
                         : sizeof clsid;
}

bool haveOneKey(const CLSID& a, const CLSID& b) {
  const std::size_t length = keyLength(a);
  return length == keyLength(b) && std::memcmp(&a, &b, length) == 0;
}

// Whether an opening answers a pointer exactly when it answers eOk; then it is closed again.
void expectAgreement(Findings& findings, const char* function, VkDbObject* object, Velt::ErrorStatus status) {
  findings.expect(
      (status == Velt::eOk) == (object != nullptr), "opening-agrees",
      std::string(function) + " answers eOk together with an object, or neither",
      std::string(object != nullptr ? "an object" : "null") + " with the status " + std::to_string(status));
  if (object != nullptr) object->close();
}

void checkLayer(Findings& findings, VkDbObjectId layerId) {
  findings.tries("layer-opens");
  VkDbObject* layer = nullptr;
  const Velt::ErrorStatus status = vkdbOpenVkDbObject(layer, layerId, VkDb::kForRead, false);
  findings.expect(status == Velt::eOk && layer != nullptr && layer->isKindOf(VkDbLayerTableRecord::desc()),
                  "layer-opens", "the layer opens as a VkDbLayerTableRecord",
                  layer != nullptr ? "an object of another class" : "the status " + std::to_string(status));
  expectAgreement(findings, "vkdbOpenVkDbObject", layer, status);
}

}  // namespace

void checkMadeUpIds(Findings& findings, std::span<const long> oldIds) {
  for (const long oldId : {0L, -1L, std::numeric_limits<long>::min(), std::numeric_limits<long>::max()}) {
    bool isGiven = false;
    for (const long given : oldIds)
      isGiven = isGiven || given == oldId;
    if (isGiven) continue;
    findings.about("id " + std::to_string(oldId));
    findings.tries("made-up-id");
    VkDbEntity* entity = nullptr;
    const Velt::ErrorStatus status = vkdbOpenVkDbEntity(entity, idOf(oldId), VkDb::kForRead);
    findings.expect(status != Velt::eOk && entity == nullptr, "made-up-id",
                    "an id that was never given opens nothing", "the status " + std::to_string(status));
    if (entity != nullptr) entity->close();
  }
}

bool checkEntity(Findings& findings, EntityClass& entity) {
  findings.tries("entity-opens");
  VkDbEntity* opened = nullptr;
  const Velt::ErrorStatus status = vkdbOpenVkDbEntity(opened, idOf(entity.oldId), VkDb::kForRead);
  if (!findings.expect(status == Velt::eOk && opened != nullptr, "entity-opens",
                       "vkdbOpenVkDbEntity opens it", "the status " + std::to_string(status))) {
    if (opened != nullptr) opened->close();
    return false;
  }
  findings.expect(opened->isKindOf(VkDbEntity::desc()), "entity-class",
                  "it is of VkDbEntity or a class below", "it is not");
  findings.tries("class-id");
  constexpr CLSID untouched = GUID_NULL;
  entity.clsid = untouched;
  const Velt::ErrorStatus classified = opened->getClassID(&entity.clsid);
  if (classified != Velt::eOk) {
    findings.expect(entity.clsid == untouched, "class-id", "a getClassID that fails leaves its output",
                    "an id");
    // What the layer takes then.
    entity.clsid = velt::CLSID_VeltEntity;
  }
  findings.expect(!(entity.clsid == GUID_NULL), "class-id", "getClassID answers the id of a class",
                  "GUID_NULL");
  findings.tries("layer-opens");
  const VkDbObjectId layerId = opened->layerId();
  opened->close();

  findings.tries("opening-agrees");
  VkDbEntity* again = nullptr;
  const Velt::ErrorStatus reopened = vkdbOpenObject(again, idOf(entity.oldId), VkDb::kForRead);
  findings.expect(reopened == Velt::eOk, "entity-opens", "vkdbOpenObject opens it too",
                  "the status " + std::to_string(reopened));
  expectAgreement(findings, "vkdbOpenObject", again, reopened);
  entity.hasLayer = !layerId.isNull();
  if (entity.hasLayer) checkLayer(findings, layerId);
  return true;
}

void checkLayers(Findings& findings, std::span<const EntityClass> entities) {
  if (entities.empty()) return;
  findings.about("all entities");
  const bool isAnyOnOne = std::any_of(entities.begin(), entities.end(),
                                      [](const EntityClass& entity) { return entity.hasLayer; });
  findings.expect(isAnyOnOne, "layer-opens", "entities are on layers", "layerId() answers null for each");
}

void checkClassIds(Findings& findings, std::span<const EntityClass> entities) {
  // One entity of each class.
  std::vector<EntityClass> classes;
  for (const EntityClass& entity : entities) {
    const auto isOfClass = [&](const EntityClass& known) { return known.clsid == entity.clsid; };
    if (std::none_of(classes.begin(), classes.end(), isOfClass)) classes.push_back(entity);
  }
  for (std::size_t i = 0; i < classes.size(); ++i) {
    for (std::size_t j = i + 1; j < classes.size(); ++j) {
      findings.about("entities " + std::to_string(classes[i].oldId) + " and "
                     + std::to_string(classes[j].oldId));
      findings.expect(!haveOneKey(classes[i].clsid, classes[j].clsid), "class-id-bytes",
                      "the class ids differ before their first zero byte", "they agree up to there");
    }
  }
}

}  // namespace velt::hostcheck
