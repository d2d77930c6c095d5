#pragma once

// Declares CLSID_Velt... and IID_... at global scope, for every row of Ids.inc. They are data that the property layer
// exports. A host, which does not link the layer, has the same values from IdValues.h.

#include "host/com/Guid.h"

// clang-format off
#define VELT_CLSID(name, ...) extern "C" __attribute__((visibility("default"))) const GUID CLSID_##name;
#define VELT_IID(name, ...) extern "C" __attribute__((visibility("default"))) const GUID IID_##name;
#include "host/automation/Ids.inc"
// clang-format on
