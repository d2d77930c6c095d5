#pragma once

// IDispatch: the members of an object by name. A name is resolved to a number, its DISPID, and the member is read,
// written or called by that number. Every automation object of an entity has this interface; without it
// InitializePropData ends with message 1003.

#include "host/com/IUnknown.h"
#include "host/com/Variant.h"

struct ITypeInfo;

// The arguments of a call; they stay the caller's.
struct DISPPARAMS {
  // cArgs of them, the last argument first; those with a name stand before those without.
  VARIANT* rgvarg;
  // cNamedArgs of them. The value of a property put has the name DISPID_PROPERTYPUT.
  DISPID* rgdispidNamedArgs;
  // How many arguments there are, and how many of them have a name.
  UINT cArgs;
  UINT cNamedArgs;
};

// What a member tells with DISP_E_EXCEPTION. The three strings belong to the caller of Invoke, who frees them.
struct EXCEPINFO {
  // The object's own number of the error.
  WORD wCode;
  // Of no meaning.
  WORD wReserved;
  // Who failed, why, and the file that tells more.
  BSTR bstrSource;
  BSTR bstrDescription;
  BSTR bstrHelpFile;
  // The place in that file.
  DWORD dwHelpContext;
  // Of no meaning.
  void* pvReserved;
  // Fills the rest in when it is asked for; the layer asks for nothing.
  HRESULT (*pfnDeferredFillIn)(EXCEPINFO*);
  // The result that failed.
  SCODE scode;
};

// What Invoke is to do with the member.
inline constexpr WORD DISPATCH_METHOD = 1;
inline constexpr WORD DISPATCH_PROPERTYGET = 2;
inline constexpr WORD DISPATCH_PROPERTYPUT = 4;
inline constexpr WORD DISPATCH_PROPERTYPUTREF = 8;

// The member that an object stands for itself, no member, and the name of the value of a property put.
inline constexpr DISPID DISPID_VALUE = 0;
inline constexpr DISPID DISPID_UNKNOWN = -1;
inline constexpr DISPID DISPID_PROPERTYPUT = -3;

struct IDispatch : IUnknown {
  // 1 for an object with type information, else 0. Not called by the layer.
  virtual HRESULT GetTypeInfoCount(UINT* count) = 0;
  // The type information, with a reference for the caller; index is 0.
  // Called by: GetPropertiesInfo, for the first entity of a class. Failure: message 1005, or 1006 for null.
  virtual HRESULT GetTypeInfo(UINT index, LCID locale, ITypeInfo** typeInfo) = 0;
  // The DISPID of the member names[0], and those of its parameters by the further names. iid is GUID_NULL. Called by:
  // GetPropertiesInfo for every function of the type information (failure: message 1010, and the query ends), and to
  // count elements (1019, which costs a row); SetPropertiesValue for each entity (failure, and a DISPID of 0: message
  // 1019, and the write ends).
  virtual HRESULT GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* dispIds) = 0;
  // Reads, writes or calls the member. iid is GUID_NULL; result, exception and argumentError may be null. Called by:
  // GetPropertiesInfo and GetPropInfoValue to get values, whose result is not looked at: a failing get leaves the
  // value as it finds it, which is zero under the declared type in a query; SetPropertiesValue to put one (failure:
  // the write ends without a message, and entities before this one keep the new value).
  //   result         overwritten, not cleared first; what it then holds is the caller's to clear
  //   exception      filled with DISP_E_EXCEPTION
  //   argumentError  with DISP_E_TYPEMISMATCH, the place in rgvarg of the argument that does not fit
  virtual HRESULT Invoke(DISPID dispId, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params,
                         VARIANT* result, EXCEPINFO* exception, UINT* argumentError) = 0;
};

inline constexpr IID IID_IDispatch{
    0x00020400, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
