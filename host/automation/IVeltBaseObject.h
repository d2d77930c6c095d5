#pragma once

// Ties an automation object to the database object behind it.

#include "host/automation/Ids.h"
#include "host/com/IUnknown.h"
#include "host/database/VkDbObjectId.h"

struct IVeltBaseObject : IUnknown {
  virtual HRESULT SetObjectId(VkDbObjectId& object, VkDbObjectId owner, wchar_t* keyword) = 0;
  virtual HRESULT GetObjectId(VkDbObjectId* object) = 0;
};
