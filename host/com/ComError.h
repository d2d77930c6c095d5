#pragma once

// _com_error: what the host's COM wrappers throw when a call fails. Description() is never null.

#include "host/com/Bstr.h"
#include "host/com/HResult.h"

class _bstr_t {
 public:
  explicit _bstr_t(const wchar_t* text) : string_(SysAllocString(text)) {}
  _bstr_t(const _bstr_t& other) : string_(SysAllocString(other.string_)) {}
  _bstr_t& operator=(const _bstr_t&) = delete;
  ~_bstr_t() { SysFreeString(string_); }

  operator const wchar_t*() const { return string_ != nullptr ? string_ : L""; }

 private:
  BSTR string_;
};

class _com_error {
 public:
  explicit _com_error(HRESULT result, const wchar_t* description = nullptr);
  _com_error(const _com_error& other);
  _com_error& operator=(const _com_error&) = delete;
  virtual ~_com_error();

  HRESULT Error() const;
  _bstr_t Description() const;

 private:
  HRESULT result_;
  BSTR description_;
};

[[noreturn]] void _com_raise_error(HRESULT result, const wchar_t* description = nullptr);
