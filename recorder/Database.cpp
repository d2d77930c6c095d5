// The drawing database, in the place of the host's: opened objects, classes, and the extensions that lead to property
// sources. The layer gets objects of our own, with the function tables of the host's; everything else about them are
// functions that stand here, too.

#include <unordered_map>

#include "host/com/StringArray.h"
#include "host/database/OpenObject.h"
#include "host/palette/IPropertySource.h"
#include "host/palette/PerInstanceProperties.h"
#include "recorder/Call.h"
#include "recorder/Database.h"
#include "recorder/Next.h"

using namespace velt::recorder;

namespace {

// --- objects of our own ---------------------------------------------------------------------------------------------------
//
// Not derived from the host's classes, whose functions a host need not export; only the order of the virtual ones counts.

// What an object of the database can be asked: isA first, then what its class adds.
struct Stand {
  Stand(void* itsReal, std::uint64_t itsNumber) : real(itsReal), number(itsNumber) {}

  virtual VkRxClass* isA() const {
    VkRxClass* answered = nullptr;
    const auto* const object = static_cast<const VkRxObject*>(real);
    if (side() != Side::layer) return object != nullptr ? object->isA() : nullptr;
    perform<void>(
        "VkRxObject::isA", number, [&] { answered = object->isA(); }, Out("class", &answered));
    return answered;
  }

  // Null in a replay.
  void* const real;
  const std::uint64_t number;
};

struct OpenedStand final : Stand {
  using Stand::Stand;

  virtual Velt::ErrorStatus getClassID(CLSID* clsid) const {
    const auto* const object = static_cast<const VkDbObject*>(real);
    const auto ask = [&] { return object->getClassID(clsid); };
    if (side() != Side::layer) return object != nullptr ? ask() : Velt::eNotImplemented;
    return perform<Velt::ErrorStatus>("VkDbObject::getClassID", number, ask,
                                      Out("clsid", clsid, Taken::always));
  }
};

struct RegisteredStand final : Stand {
  using Stand::Stand;
};

struct ExtensionStand final : Stand {
  using Stand::Stand;

  virtual BOOL GetObjectPropertySourceNames(VkDbObjectId object, VARIANT* names) {
    auto* const extension = static_cast<OPMPerInstancePropertyExtension*>(real);
    return perform<BOOL>(
        "OPMPerInstancePropertyExtension::GetObjectPropertySourceNames", number,
        [&] { return extension->GetObjectPropertySourceNames(object, names); }, In("object", object),
        Out("names", names));
  }
};

template <class S>
S* standFor(void* real);
template <class S>
S* standFrom(const json& number);

// The answer that is a stand for an object of the host.
template <class S, class T>
auto standOut(const char* name, T*& place) {
  return Special(
      name,
      [&place](bool hasSucceeded) {
        if (!hasSucceeded || place == nullptr) return json();
        S* const stand = standFor<S>(place);
        place = reinterpret_cast<T*>(stand);
        return json(stand->number);
      },
      [&place](const json& from) { place = reinterpret_cast<T*>(standFrom<S>(from)); });
}

struct FactoryStand final : Stand {
  using Stand::Stand;

  virtual OPMPerInstancePropertyExtension* CreateOPMInstancePropertyExtension(VkRxClass* entityClass) {
    auto* const factory = static_cast<OPMPerInstancePropertyExtensionFactory*>(real);
    OPMPerInstancePropertyExtension* extension = nullptr;
    perform<void>(
        "OPMPerInstancePropertyExtensionFactory::CreateOPMInstancePropertyExtension", number,
        [&] { extension = factory->CreateOPMInstancePropertyExtension(entityClass); },
        In("class", entityClass), standOut<ExtensionStand>("extension", extension));
    return extension;
  }
};

struct SourcesStand final : Stand {
  using Stand::Stand;

  virtual BOOL GetPropertySourceAt(BSTR name, IPropertySource** source) {
    auto* const sources = static_cast<OPMPerInstancePropertySources*>(real);
    return perform<BOOL>(
        "OPMPerInstancePropertySources::GetPropertySourceAt", number,
        [&] { return sources->GetPropertySourceAt(name, source); }, In("name", name), Out("source", source));
  }
};

std::unordered_map<const void*, Stand*>& stands() {
  static auto& all = *new std::unordered_map<const void*, Stand*>;
  return all;
}

template <class S>
S* standFor(void* real) {
  static auto& all = *new std::unordered_map<void*, S*>;
  S*& stand = all[real];
  if (stand == nullptr) {
    stand = new S(real, numberOf(real));
    setNumber(stand, stand->number);
    stands().emplace(stand, stand);
  }
  return stand;
}

template <class S>
S* standFrom(const json& from) {
  static auto& all = *new std::unordered_map<std::uint64_t, S*>;
  const auto number = from.get<std::uint64_t>();
  if (number == 0) return nullptr;
  S*& stand = all[number];
  if (stand == nullptr) {
    stand = new S(nullptr, number);
    setNumber(stand, number);
    stands().emplace(stand, stand);
  }
  return stand;
}

const Stand* standAt(const void* object) {
  const auto found = stands().find(object);
  return found != stands().end() ? found->second : nullptr;
}

template <class T>
T* realOf(T* object) {
  const Stand* const stand = standAt(object);
  return stand != nullptr ? static_cast<T*>(stand->real) : object;
}

// A call of a function that belongs to an object.
template <class Result, class T, class Work, class... Parts>
Result ask(const char* name, T* object, Work work, Parts... parts) {
  T* const real = realOf(object);
  if (side() != Side::layer) return work(real);
  return perform<Result>(
      name, numberOf(object), [&] { return work(real); }, std::move(parts)...);
}

// A class is named once, and is the same in every process.
template <class Host>
VkRxClass* named(Host* host, const char* name) {
  VkRxClass* const answered = host();
  if (side() == Side::layer) nameClass(answered, name);
  return answered;
}

template <class T, class Work>
Velt::ErrorStatus opened(const char* name, T*& object, VkDbObjectId id, VkDb::OpenMode mode, Work work) {
  if (side() != Side::layer) return work();
  return perform<Velt::ErrorStatus>(
      name, 0, work, In("id", id), In("mode", mode),
      // The pointer counts in some places, and the status in others.
      Special(
          "object",
          [&](bool) {
            if (object == nullptr) return json(0);
            OpenedStand* const stand = standFor<OpenedStand>(object);
            object = reinterpret_cast<T*>(stand);
            return json(stand->number);
          },
          [&](const json& from) { object = reinterpret_cast<T*>(standFrom<OpenedStand>(from)); }));
}

}  // namespace

namespace velt::recorder {

void nameClasses() {
  const Turn turn(Side::layer);
  VkDbObject::desc();
  VkDbEntity::desc();
  VkDbBlockReference::desc();
  VkDbLayerTableRecord::desc();
  VkDbDatabase::desc();
  OPMPerInstancePropertyExtensionFactory::desc();
  OPMPerInstancePropertySources::desc();
}

}  // namespace velt::recorder

// --- classes ----------------------------------------------------------------------------------------------------------

#define VELT_DESC(Class, symbol)                          \
  VkRxClass* Class::desc() {                              \
    static auto* const host = next<VkRxClass*()>(symbol); \
    return named(host, #Class);                           \
  }
VELT_DESC(VkDbObject, "_ZN10VkDbObject4descEv")
VELT_DESC(VkDbEntity, "_ZN10VkDbEntity4descEv")
VELT_DESC(VkDbBlockReference, "_ZN18VkDbBlockReference4descEv")
VELT_DESC(VkDbLayerTableRecord, "_ZN20VkDbLayerTableRecord4descEv")
VELT_DESC(VkDbDatabase, "_ZN12VkDbDatabase4descEv")
VELT_DESC(OPMPerInstancePropertyExtensionFactory, "_ZN38OPMPerInstancePropertyExtensionFactory4descEv")
VELT_DESC(OPMPerInstancePropertySources, "_ZN29OPMPerInstancePropertySources4descEv")
#undef VELT_DESC

bool VkRxObject::isKindOf(const VkRxClass* wanted) const {
  static auto* const host =
      next<bool(const VkRxObject*, const VkRxClass*)>("_ZNK10VkRxObject8isKindOfEPK9VkRxClass");
  auto* const named = const_cast<VkRxClass*>(wanted);
  return ask<bool>(
      "VkRxObject::isKindOf", this, [&](const VkRxObject* real) { return host(real, wanted); },
      In("class", named));
}

VkRxObject* VkRxClass::queryX(const VkRxClass* protocol) const {
  static auto* const host =
      next<VkRxObject*(const VkRxClass*, const VkRxClass*)>("_ZNK9VkRxClass6queryXEPKS_");
  if (side() != Side::layer) return host(this, protocol);
  VkRxObject* extension = nullptr;
  auto* const asked = const_cast<VkRxClass*>(this);
  auto* const named = const_cast<VkRxClass*>(protocol);
  perform<void>(
      "VkRxClass::queryX", 0, [&] { extension = host(this, protocol); }, In("of", asked),
      In("protocol", named), standOut<RegisteredStand>("extension", extension));
  return extension;
}

OPMPerInstancePropertyExtensionFactory* OPMPerInstancePropertyExtensionFactory::cast(
    const VkRxObject* object) {
  static auto* const host = next<OPMPerInstancePropertyExtensionFactory*(const VkRxObject*)>(
      "_ZN38OPMPerInstancePropertyExtensionFactory4castEPK10VkRxObject");
  if (side() != Side::layer) return host(object);
  OPMPerInstancePropertyExtensionFactory* answered = nullptr;
  ask<void>(
      "OPMPerInstancePropertyExtensionFactory::cast", object,
      [&](const VkRxObject* real) { answered = host(real); }, standOut<FactoryStand>("extension", answered));
  return answered;
}

OPMPerInstancePropertySources* OPMPerInstancePropertySources::cast(const VkRxObject* object) {
  static auto* const host = next<OPMPerInstancePropertySources*(const VkRxObject*)>(
      "_ZN29OPMPerInstancePropertySources4castEPK10VkRxObject");
  if (side() != Side::layer) return host(object);
  OPMPerInstancePropertySources* answered = nullptr;
  ask<void>(
      "OPMPerInstancePropertySources::cast", object, [&](const VkRxObject* real) { answered = host(real); },
      standOut<SourcesStand>("extension", answered));
  return answered;
}

// --- objects ----------------------------------------------------------------------------------------------------------

Velt::ErrorStatus vkdbOpenVkDbObject(VkDbObject*& object, VkDbObjectId id, VkDb::OpenMode mode,
                                     bool openErased) {
  static auto* const host = next<Velt::ErrorStatus(VkDbObject*&, VkDbObjectId, VkDb::OpenMode, bool)>(
      "_Z18vkdbOpenVkDbObjectRP10VkDbObject12VkDbObjectIdN4VkDb8OpenModeEb");
  return opened("vkdbOpenVkDbObject", object, id, mode, [&] { return host(object, id, mode, openErased); });
}

Velt::ErrorStatus vkdbOpenVkDbEntity(VkDbEntity*& entity, VkDbObjectId id, VkDb::OpenMode mode,
                                     bool openErased) {
  static auto* const host = next<Velt::ErrorStatus(VkDbEntity*&, VkDbObjectId, VkDb::OpenMode, bool)>(
      "_Z18vkdbOpenVkDbEntityRP10VkDbEntity12VkDbObjectIdN4VkDb8OpenModeEb");
  return opened("vkdbOpenVkDbEntity", entity, id, mode, [&] { return host(entity, id, mode, openErased); });
}

Velt::ErrorStatus vkdbOpenObject(VkDbEntity*& entity, VkDbObjectId id, VkDb::OpenMode mode) {
  static auto* const host = next<Velt::ErrorStatus(VkDbEntity*&, VkDbObjectId, VkDb::OpenMode)>(
      "_Z14vkdbOpenObjectRP10VkDbEntity12VkDbObjectIdN4VkDb8OpenModeE");
  return opened("vkdbOpenObject", entity, id, mode, [&] { return host(entity, id, mode); });
}

Velt::ErrorStatus VkDbObject::close() {
  static auto* const host = next<Velt::ErrorStatus(VkDbObject*)>("_ZN10VkDbObject5closeEv");
  return ask<Velt::ErrorStatus>("VkDbObject::close", this, [&](VkDbObject* real) { return host(real); });
}

VkDbObjectId VkDbEntity::layerId() const {
  static auto* const host = next<VkDbObjectId(const VkDbEntity*)>("_ZNK10VkDbEntity7layerIdEv");
  VkDbObjectId id;
  ask<void>(
      "VkDbEntity::layerId", this, [&](const VkDbEntity* real) { id = host(real); }, Out("id", &id));
  return id;
}

VkDbObjectId VkDbBlockReference::blockTableRecord() const {
  static auto* const host =
      next<VkDbObjectId(const VkDbBlockReference*)>("_ZNK18VkDbBlockReference16blockTableRecordEv");
  VkDbObjectId id;
  ask<void>(
      "VkDbBlockReference::blockTableRecord", this, [&](const VkDbBlockReference* real) { id = host(real); },
      Out("id", &id));
  return id;
}

VkCmColor VkDbLayerTableRecord::color() const {
  static auto* const host =
      next<VkCmColor(const VkDbLayerTableRecord*)>("_ZNK20VkDbLayerTableRecord5colorEv");
  VkCmColor answered;
  ask<void>(
      "VkDbLayerTableRecord::color", this, [&](const VkDbLayerTableRecord* real) { answered = host(real); },
      Special(
          "color", [&](bool) { return colorJson(answered); },
          [&](const json& from) { answered = colorFrom(from); }));
  return answered;
}

bool VkDbLayerTableRecord::isLocked() const {
  static auto* const host = next<bool(const VkDbLayerTableRecord*)>("_ZNK20VkDbLayerTableRecord8isLockedEv");
  return ask<bool>("VkDbLayerTableRecord::isLocked", this,
                   [&](const VkDbLayerTableRecord* real) { return host(real); });
}

VkDbObjectId vkdbGetEnhancedBlkOriginalBtrId(const VkDbBlockReference* reference) {
  static auto* const host = next<VkDbObjectId(const VkDbBlockReference*)>(
      "_Z31vkdbGetEnhancedBlkOriginalBtrIdPK18VkDbBlockReference");
  VkDbObjectId id;
  ask<void>(
      "vkdbGetEnhancedBlkOriginalBtrId", reference, [&](const VkDbBlockReference* real) { id = host(real); },
      Out("id", &id));
  return id;
}

bool vkdbIsEnhancedBlockRef(const VkDbBlockReference* reference) {
  static auto* const host =
      next<bool(const VkDbBlockReference*)>("_Z22vkdbIsEnhancedBlockRefPK18VkDbBlockReference");
  return ask<bool>("vkdbIsEnhancedBlockRef", reference,
                   [&](const VkDbBlockReference* real) { return host(real); });
}
