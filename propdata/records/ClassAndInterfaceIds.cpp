// The class ids and interface ids of the host's automation classes, as exported data.

#include "host/automation/Ids.h"

// clang-format off
#define VELT_CLSID(name, d1, d2, d3, ...) const GUID CLSID_##name{d1, d2, d3, {__VA_ARGS__}};
#define VELT_IID(name, d1, d2, d3, ...) const GUID IID_##name{d1, d2, d3, {__VA_ARGS__}};
#include "host/automation/Ids.inc"
// clang-format on
