#pragma once

// _com_error: the one exception that host code may throw at the layer. The host's wrappers (COleSafeArray,
// CStringArray) report failures with it; interface methods answer an HRESULT instead, except that a put which refuses
// a value may throw the reason. The layer makes Description() the message that the palette shows.

#include "host/com/Bstr.h"
#include "host/com/HResult.h"

// Owns a BSTR. Reads as the empty string when there is none.
class _bstr_t {
 public:
  // A copy of the text.
  explicit _bstr_t(const wchar_t* text) : string_(SysAllocString(text)) {}
  _bstr_t(const _bstr_t& other) : string_(SysAllocString(other.string_)) {}
  _bstr_t& operator=(const _bstr_t&) = delete;
  ~_bstr_t() { SysFreeString(string_); }

  // Valid as long as this object; never null.
  operator const wchar_t*() const { return string_ != nullptr ? string_ : L""; }

 private:
  BSTR string_;
};

// What is thrown. Any operation may meet one, and ends with its failure value: see the notes on exceptions in
// VeltPropData.h. The layer reads Description() and keeps nothing.
class _com_error {
 public:
  // Copies the description.
  explicit _com_error(HRESULT result, const wchar_t* description = nullptr);
  _com_error(const _com_error& other);
  _com_error& operator=(const _com_error&) = delete;
  virtual ~_com_error();

  // The result that failed.
  HRESULT Error() const;
  // In words, for the user. Never null: without a description of its own, a general text for the result.
  _bstr_t Description() const;

 private:
  HRESULT result_;
  BSTR description_;
};

// Throws a _com_error.
[[noreturn]] void _com_raise_error(HRESULT result, const wchar_t* description = nullptr);
