#include "host/palette/PerInstanceProperties.h"

namespace {

// The object as one of class T; null for null and for an object of another class.
template <class T>
T* castTo(const VkRxObject* object) {
  if (object == nullptr || !object->isKindOf(T::desc())) return nullptr;
  return const_cast<T*>(static_cast<const T*>(object));
}

}  // namespace

VkRxClass* OPMPerInstancePropertyExtension::desc() {
  static VkRxClass description(L"OPMPerInstancePropertyExtension", VkRxObject::desc());
  return &description;
}

VkRxClass* OPMPerInstancePropertyExtension::isA() const {
  return desc();
}

VkRxClass* OPMPerInstancePropertyExtensionFactory::desc() {
  static VkRxClass description(L"OPMPerInstancePropertyExtensionFactory", VkRxObject::desc());
  return &description;
}

VkRxClass* OPMPerInstancePropertyExtensionFactory::isA() const {
  return desc();
}

OPMPerInstancePropertyExtensionFactory* OPMPerInstancePropertyExtensionFactory::cast(
    const VkRxObject* object) {
  return castTo<OPMPerInstancePropertyExtensionFactory>(object);
}

VkRxClass* OPMPerInstancePropertySources::desc() {
  static VkRxClass description(L"OPMPerInstancePropertySources", VkRxObject::desc());
  return &description;
}

VkRxClass* OPMPerInstancePropertySources::isA() const {
  return desc();
}

OPMPerInstancePropertySources* OPMPerInstancePropertySources::cast(const VkRxObject* object) {
  return castTo<OPMPerInstancePropertySources>(object);
}
