#pragma once

// The two protocol extensions through which the host publishes property sources, and the per-class
// extension that names the sources of an object. All three belong to the host.

#include "host/com/IUnknown.h"
#include "host/com/Variant.h"
#include "host/database/VkDbObjectId.h"
#include "host/database/VkRxObject.h"

struct IPropertySource;

class OPMPerInstancePropertyExtension : public VkRxObject {
 public:
  static VkRxClass* desc();
  VkRxClass* isA() const override;

  // True when the class has sources: names is then a SAFEARRAY of BSTR that the caller clears.
  virtual BOOL GetObjectPropertySourceNames(VkDbObjectId object, VARIANT* names) = 0;
};

class OPMPerInstancePropertyExtensionFactory : public VkRxObject {
 public:
  static VkRxClass* desc();
  static OPMPerInstancePropertyExtensionFactory* cast(const VkRxObject* object);
  VkRxClass* isA() const override;

  virtual OPMPerInstancePropertyExtension* CreateOPMInstancePropertyExtension(VkRxClass* entityClass) = 0;
};

class OPMPerInstancePropertySources : public VkRxObject {
 public:
  static VkRxClass* desc();
  static OPMPerInstancePropertySources* cast(const VkRxObject* object);
  VkRxClass* isA() const override;

  // True when there is a source of that name: source then holds a reference for the caller.
  virtual BOOL GetPropertySourceAt(BSTR name, IPropertySource** source) = 0;
};
