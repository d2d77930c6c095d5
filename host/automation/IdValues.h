// The host's own copies of the class ids and interface ids.
//
// host/automation/Ids.h only declares the constants of the same names at global scope: they are data of the property
// layer, which a host does not link. Code of the host lives in namespace velt, where the unqualified names find these.
#pragma once

#include <cstddef>
#include <iterator>

#include "host/com/Guid.h"

namespace velt {

// clang-format off
#define VELT_CLSID(name, first, second, third, ...) inline constexpr CLSID CLSID_##name{first, second, third, {__VA_ARGS__}};
#define VELT_IID(name, first, second, third, ...) inline constexpr IID IID_##name{first, second, third, {__VA_ARGS__}};
#include "host/automation/Ids.inc"
// clang-format on

struct NamedClass {
  CLSID clsid;
  const char* name;         // "VeltLine"
  const wchar_t* wideName;  // the same
};

/// Every automation class, in the order of the list.
inline constexpr NamedClass namedClasses[] = {
// clang-format off
#define VELT_CLSID(name, ...) {CLSID_##name, #name, L"" #name},
#define VELT_IID(name, ...)
#include "host/automation/Ids.inc"
    // clang-format on
};

/// Null for an id that is not in the list.
inline const NamedClass* findClass(REFCLSID clsid) {
  for (const NamedClass& named : namedClasses) {
    if (named.clsid == clsid) return &named;
  }
  return nullptr;
}

}  // namespace velt
