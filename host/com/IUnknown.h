#pragma once

// The root of every interface. Interfaces are plain vtables: pure virtual methods, no data, no virtual
// destructor (it would take slots of the function table that callers count).

#include "host/com/HResult.h"
#include "host/com/Types.h"

struct IUnknown {
  virtual HRESULT QueryInterface(REFIID iid, void** object) = 0;
  virtual ULONG AddRef() = 0;
  virtual ULONG Release() = 0;
};

inline constexpr IID IID_IUnknown{
    0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
