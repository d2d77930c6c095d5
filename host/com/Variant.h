#pragma once

// VARIANT: a value with a tag, vt, that says of which type it is.
//
// Ownership: a VARIANT owns the string, array or object that it refers to, and VariantClear gives it back; with
// VT_BYREF it owns nothing. A bitwise copy shares what the value refers to, so only one of the two may be cleared;
// VariantCopy makes a second owner. What a call answers is the caller's to clear; what is passed stays the caller's.

#include <cstddef>

#include "host/com/Bstr.h"
#include "host/com/SafeArray.h"
#include "host/com/Types.h"

struct IUnknown;
struct IDispatch;
struct IRecordInfo;
struct VARIANT;

// The types of values, by their tags.
enum VARENUM : VARTYPE {
  // Neither is zero.
  VT_EMPTY = 0,  // nothing is there
  VT_NULL = 1,   // there is no value, which is something
  // Numbers, each in the member of VARIANT that is named after it.
  VT_I2 = 2,            // SHORT
  VT_I4 = 3,            // LONG
  VT_R4 = 4,            // float
  VT_R8 = 5,            // double
  VT_CY = 6,            // an amount of money
  VT_DATE = 7,          // days since the end of 1899
  VT_BSTR = 8,          // a string
  VT_DISPATCH = 9,      // an object by its IDispatch
  VT_ERROR = 10,        // SCODE
  VT_BOOL = 11,         // yes or no
  VT_VARIANT = 12,      // a value with a tag of its own
  VT_UNKNOWN = 13,      // an object by its IUnknown
  VT_DECIMAL = 14,      // takes the whole VARIANT but the tag
  VT_I1 = 16,           // signed byte
  VT_UI1 = 17,          // BYTE
  VT_UI2 = 18,          // USHORT
  VT_UI4 = 19,          // ULONG
  VT_I8 = 20,           // LONGLONG
  VT_UI8 = 21,          // ULONGLONG
  VT_INT = 22,          // INT
  VT_UINT = 23,         // UINT
  VT_VOID = 24,         // no type: of functions that return nothing
  VT_HRESULT = 25,      // of functions: whether they succeeded
  VT_PTR = 26,          // declared types: what TYPEDESC points to
  VT_SAFEARRAY = 27,    // declared types: an array that carries its bounds
  VT_CARRAY = 28,       // declared types: an array of fixed bounds
  VT_USERDEFINED = 29,  // declared types: what another type information tells
  VT_LPSTR = 30,        // declared types: bytes that a NUL ends
  VT_LPWSTR = 31,       // declared types: characters that a NUL ends
  VT_RECORD = 36,       // RECORDVALUE
  // Added to the type of the elements.
  VT_ARRAY = 0x2000,  // SAFEARRAY
  // Added to the type of the value that byref points to.
  VT_BYREF = 0x4000,    // somebody else owns the value
  VT_TYPEMASK = 0x0FFF  // leaves the type without these two
};

// An amount of money, times 10,000.
union CY {
  // Ten thousandths of the unit.
  LONGLONG int64;
};

// 96 bits, divided by 10 to the power of scale; sign is 0x80 for a negative number.
struct DECIMAL {
  // Where the tag of the VARIANT stands.
  USHORT wReserved;
  // Digits after the point, and 0x80 for a negative number.
  BYTE scale;
  BYTE sign;
  // The upper 32 of the 96 bits, and the lower 64.
  ULONG Hi32;
  ULONGLONG Lo64;
};

// A record, and how it is laid out.
struct RECORDVALUE {
  // The record, and its description. The layer reads neither.
  void* pvRecord;
  IRecordInfo* pRecInfo;
};

struct VARIANT {
  // A VARENUM: which of the members below counts.
  VARTYPE vt;
  // Part of a DECIMAL.
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
// Called by: every operation that makes rows or reads values.
// Makes it VT_EMPTY, whatever it held: for memory that holds no value yet.
void VariantInit(VARIANT* variant);
// Gives back what the value owns, and makes it VT_EMPTY. A failure leaves it as it was. Called by: GetPropertiesInfo
// for the values that are not in the result; its own result is not looked at, so a value that cannot be cleared is
// lost.
HRESULT VariantClear(VARIANT* variant);
// destination gets a copy of its own, and what it held is cleared. A failure leaves it as it was.
HRESULT VariantCopy(VARIANT* destination, const VARIANT* source);
// The same, converted to another type. Both may be one. flags are 0 for the usual conversion.
HRESULT VariantChangeType(VARIANT* destination, const VARIANT* source, USHORT flags, VARTYPE type);
}
