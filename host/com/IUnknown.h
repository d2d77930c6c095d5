#pragma once

// IUnknown: the root of every interface, and how long its object lives.
//
// An interface is a plain function table: pure virtual methods in a fixed order, no data, and no virtual destructor,
// which would take places of the table that callers count.
// Ownership: a pointer that a call answers comes with one reference, which the caller gives back with Release. A
// pointer that is passed to a call comes with none: who keeps it calls AddRef.

#include "host/com/HResult.h"
#include "host/com/Types.h"

struct IUnknown {
  // Another interface of the same object, with a reference for the caller; E_NOINTERFACE and null when it has none.
  // All queries for IID_IUnknown of one object answer the same pointer.
  // Called by: every operation that asks an object. A success that yields null counts as a failure.
  virtual HRESULT QueryInterface(REFIID iid, void** object) = 0;
  // The count that they answer is for diagnosis only.
  virtual ULONG AddRef() = 0;
  virtual ULONG Release() = 0;
};

inline constexpr IID IID_IUnknown{
    0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
