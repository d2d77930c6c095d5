#pragma once

// IVeltBaseObject: ties an automation object to the database object that it speaks for. Every automation object has it;
// without it InitializePropData ends with message 1004.

#include "host/automation/Ids.h"
#include "host/com/IUnknown.h"
#include "host/database/VkDbObjectId.h"

struct IVeltBaseObject : IUnknown {
  // Called by: InitializePropData, for each entity.
  // Binds a new automation object. The layer passes the null id as owner and no keyword: they are for objects that are
  // yet to be added to a drawing. It does not look at the result, so an object that could not be bound answers
  // failures later, when its properties are asked for.
  virtual HRESULT SetObjectId(VkDbObjectId& object, VkDbObjectId owner, wchar_t* keyword) = 0;
  // The id that it was bound to. Called by: GetPropertiesInfo, before it looks for property sources; the result is not
  // looked at, and the null id has no sources.
  virtual HRESULT GetObjectId(VkDbObjectId* object) = 0;
};
