#pragma once

// Creates the automation object of an entity by its class id (see Ids.inc). The new object belongs to no entity yet: it
// is bound to one through IVeltBaseObject.

#include "host/com/ComRuntime.h"
#include "host/com/IUnknown.h"

// Called by: InitializePropData, for each entity. Failure: message 1002; entities before this one keep their objects.
// outer is null, since these objects are not aggregated, and context is CLSCTX_INPROC_SERVER. The interface iid of the
// new object goes to `object`, with a reference for the caller; null after a failure.
extern "C" HRESULT TqAutoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD context, REFIID iid,
                                        void** object);
