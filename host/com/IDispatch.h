#pragma once

// IDispatch: the members of an object by name. A name is resolved to a number, its DISPID, and the member is read,
// written or called by that number. Every automation object of an entity has this interface.

#include "host/com/IUnknown.h"
#include "host/com/Variant.h"

struct ITypeInfo;

// The arguments of a call; they stay the caller's.
struct DISPPARAMS {
  // cArgs of them, the last argument first; those with a name stand before those without.
  VARIANT* rgvarg;
  // cNamedArgs of them. The value of a property put has the name DISPID_PROPERTYPUT.
  DISPID* rgdispidNamedArgs;
  UINT cArgs;
  UINT cNamedArgs;
};

// What a member tells with DISP_E_EXCEPTION. The three strings belong to the caller of Invoke, who frees them.
struct EXCEPINFO {
  WORD wCode;
  WORD wReserved;
  BSTR bstrSource;
  BSTR bstrDescription;
  BSTR bstrHelpFile;
  DWORD dwHelpContext;
  void* pvReserved;
  HRESULT (*pfnDeferredFillIn)(EXCEPINFO*);
  SCODE scode;
};

// What Invoke is to do with the member.
inline constexpr WORD DISPATCH_METHOD = 1;
inline constexpr WORD DISPATCH_PROPERTYGET = 2;
inline constexpr WORD DISPATCH_PROPERTYPUT = 4;
inline constexpr WORD DISPATCH_PROPERTYPUTREF = 8;

inline constexpr DISPID DISPID_VALUE = 0;
inline constexpr DISPID DISPID_UNKNOWN = -1;
inline constexpr DISPID DISPID_PROPERTYPUT = -3;

struct IDispatch : IUnknown {
  // 1 for an object with type information, else 0.
  virtual HRESULT GetTypeInfoCount(UINT* count) = 0;
  // The type information, with a reference for the caller; index is 0.
  virtual HRESULT GetTypeInfo(UINT index, LCID locale, ITypeInfo** typeInfo) = 0;
  // The DISPID of the member names[0], and those of its parameters by the further names. iid is GUID_NULL.
  virtual HRESULT GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* dispIds) = 0;
  // Reads, writes or calls the member. iid is GUID_NULL; result, exception and argumentError may be null.
  //   result         overwritten, not cleared first; what it then holds is the caller's to clear
  //   exception      filled with DISP_E_EXCEPTION
  //   argumentError  with DISP_E_TYPEMISMATCH, the place in rgvarg of the argument that does not fit
  virtual HRESULT Invoke(DISPID dispId, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params,
                         VARIANT* result, EXCEPINFO* exception, UINT* argumentError) = 0;
};

inline constexpr IID IID_IDispatch{
    0x00020400, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
