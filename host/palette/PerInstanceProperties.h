#pragma once

// How the property sources of an entity are found. The host registers two protocol extensions on VkDbDatabase::desc(),
// and the layer goes from one to the other:
//
//   OPMPerInstancePropertyExtensionFactory   gives the extension of the entity's class,
//   OPMPerInstancePropertyExtension          which names the sources of the entity;
//   OPMPerInstancePropertySources            gives the source of each name.
//
// Ownership: all three belong to the host. Without one of them, entities have no dynamic rows.

#include "host/com/IUnknown.h"
#include "host/com/Variant.h"
#include "host/database/VkDbObjectId.h"
#include "host/database/VkRxObject.h"

struct IPropertySource;

// Names the sources of an entity. Called by: GetPropertiesInfo, as all of this file.
class OPMPerInstancePropertyExtension : public VkRxObject {
 public:
  // The run-time class, as of every object of the database.
  static VkRxClass* desc();
  VkRxClass* isA() const override;

  // Not 0 when the object has sources: names is then an array of strings, from index 0, that the caller clears.
  virtual BOOL GetObjectPropertySourceNames(VkDbObjectId object, VARIANT* names) = 0;
};

// Gives the extension of a class of entities.
class OPMPerInstancePropertyExtensionFactory : public VkRxObject {
 public:
  // The run-time class, as of every object of the database.
  static VkRxClass* desc();
  // Null for null and for an object of another class.
  static OPMPerInstancePropertyExtensionFactory* cast(const VkRxObject* object);
  VkRxClass* isA() const override;

  // The extension stays the host's, also where the host makes one for each call. Null when the class has none.
  virtual OPMPerInstancePropertyExtension* CreateOPMInstancePropertyExtension(VkRxClass* entityClass) = 0;
};

// Gives the sources by their names.
class OPMPerInstancePropertySources : public VkRxObject {
 public:
  // The run-time class, as of every object of the database.
  static VkRxClass* desc();
  // Null for null and for an object of another class.
  static OPMPerInstancePropertySources* cast(const VkRxObject* object);
  VkRxClass* isA() const override;

  // Not 0 when there is a source of that name, which then comes with a reference for the caller. The name stays the
  // caller's.
  virtual BOOL GetPropertySourceAt(BSTR name, IPropertySource** source) = 0;
};
