#pragma once

// Creates an automation object of a class; it is then bound to a database object through IVeltBaseObject.

#include "host/com/ComRuntime.h"
#include "host/com/IUnknown.h"

// object is null on failure, else holds one reference for the caller.
extern "C" HRESULT TqAutoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD context, REFIID iid,
                                        void** object);
