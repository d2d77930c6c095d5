#pragma once

// IOPMPropertyExtension: how an object wants its properties shown. Every automation object has it;
// without it the query ends with message 1011.
//
// Called by: GetPropertiesInfo; Editable for each entity, the others for the first one of a class.
// The layer does not look at the results: it sets each output to an answer that will do and takes what it then holds.
// So a method that fails leaves its output as it found it.

#include "host/com/Bstr.h"
#include "host/com/IUnknown.h"

struct IOPMPropertyExtension : IUnknown {
  // The label of the row, which the caller frees. Null or empty: the row is labelled with the property's name.
  virtual HRESULT GetDisplayName(DISPID dispId, BSTR* name) = 0;
  // Whether the property of this very object can be edited now; asked only for properties with a put function.
  virtual HRESULT Editable(DISPID dispId, BOOL* editable) = 0;
  // Whether the property is a row at all: only when the byte is exactly 1. -1 hides it.
  virtual HRESULT ShowProperty(DISPID dispId, BOOL* show) = 0;
};

inline constexpr IID IID_IOPMPropertyExtension{
    0x6E81C2A4, 0x93D7, 0x4B1F, {0xA6, 0x5C, 0x2D, 0x77, 0x91, 0xE3, 0x4A, 0x18}};
