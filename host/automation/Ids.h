#pragma once

// Declares CLSID_Velt... and IID_... for every row of Ids.inc. The constants are data that the property layer
// exports; a host has its own copies of the same values.

#include "host/com/Guid.h"

// clang-format off
#define VELT_CLSID(name, ...) extern "C" __attribute__((visibility("default"))) const GUID CLSID_##name;
#define VELT_IID(name, ...) extern "C" __attribute__((visibility("default"))) const GUID IID_##name;
#include "host/automation/Ids.inc"
// clang-format on
