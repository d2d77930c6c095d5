#pragma once

// VARIANT: a tagged value. A bitwise copy shares what the value refers to; VariantCopy makes a second owner.

#include <cstddef>

#include "host/com/Bstr.h"
#include "host/com/SafeArray.h"
#include "host/com/Types.h"

struct IUnknown;
struct IDispatch;
struct IRecordInfo;
struct VARIANT;

enum VARENUM : VARTYPE {
  VT_EMPTY = 0,
  VT_NULL = 1,
  VT_I2 = 2,
  VT_I4 = 3,
  VT_R4 = 4,
  VT_R8 = 5,
  VT_CY = 6,
  VT_DATE = 7,
  VT_BSTR = 8,
  VT_DISPATCH = 9,
  VT_ERROR = 10,
  VT_BOOL = 11,
  VT_VARIANT = 12,
  VT_UNKNOWN = 13,
  VT_DECIMAL = 14,
  VT_I1 = 16,
  VT_UI1 = 17,
  VT_UI2 = 18,
  VT_UI4 = 19,
  VT_I8 = 20,
  VT_UI8 = 21,
  VT_INT = 22,
  VT_UINT = 23,
  VT_VOID = 24,
  VT_HRESULT = 25,
  VT_PTR = 26,
  VT_SAFEARRAY = 27,
  VT_CARRAY = 28,
  VT_USERDEFINED = 29,
  VT_LPSTR = 30,
  VT_LPWSTR = 31,
  VT_RECORD = 36,
  VT_ARRAY = 0x2000,
  VT_BYREF = 0x4000,
  VT_TYPEMASK = 0x0FFF
};

union CY {
  LONGLONG int64;
};

struct DECIMAL {
  USHORT wReserved;
  BYTE scale;
  BYTE sign;
  ULONG Hi32;
  ULONGLONG Lo64;
};

struct RECORDVALUE {
  void* pvRecord;
  IRecordInfo* pRecInfo;
};

struct VARIANT {
  VARTYPE vt;
  WORD wReserved1;
  WORD wReserved2;
  WORD wReserved3;
  union {
    LONGLONG llVal;
    ULONGLONG ullVal;
    LONG lVal;
    ULONG ulVal;
    INT intVal;
    UINT uintVal;
    SHORT iVal;
    USHORT uiVal;
    std::int8_t cVal;
    BYTE bVal;
    float fltVal;
    double dblVal;
    VARIANT_BOOL boolVal;
    SCODE scode;
    CY cyVal;
    DATE date;
    BSTR bstrVal;
    IUnknown* punkVal;
    IDispatch* pdispVal;
    SAFEARRAY* parray;
    VARIANT* pvarVal;
    char* pcVal;
    void* byref;
    RECORDVALUE brecVal;
  };
};

static_assert(sizeof(VARIANT) == 24 && offsetof(VARIANT, llVal) == 8);

extern "C" {
void VariantInit(VARIANT* variant);      // sets the type tag to VT_EMPTY
HRESULT VariantClear(VARIANT* variant);  // frees what the value owns, then VT_EMPTY
HRESULT VariantCopy(VARIANT* destination, const VARIANT* source);
HRESULT VariantChangeType(VARIANT* destination, const VARIANT* source, USHORT flags, VARTYPE type);
}
