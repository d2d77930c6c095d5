#pragma once

// Counts references of objects that others wrote, whose methods may throw.
//
// Ownership: a Release that throws counts as done, since nobody could say what to do instead; an AddRef that throws has
// added nothing.

#include "host/com/HResult.h"
#include "host/com/IUnknown.h"

namespace velt::com {

// Null is fine. E_UNEXPECTED when AddRef throws.
inline HRESULT addReference(IUnknown* object) noexcept {
  try {
    if (object != nullptr) object->AddRef();
    return S_OK;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

// Null is fine.
inline void releaseReference(IUnknown* object) noexcept {
  try {
    if (object != nullptr) object->Release();
  } catch (...) {  // NOLINT(bugprone-empty-catch)
  }
}

}  // namespace velt::com
