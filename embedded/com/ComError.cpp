#include "host/com/ComError.h"

#include <cwchar>

#include "host/com/Cancellation.h"

namespace {

struct DefaultText {
  HRESULT result;
  const wchar_t* text;
};

// clang-format off
constexpr DefaultText defaultTexts[] = {
    // result                  what the user reads
    {S_OK,                    L"The operation succeeded."},
    {S_FALSE,                 L"The operation succeeded, but had nothing to do."},
    {E_NOTIMPL,               L"The operation is not supported."},
    {E_NOINTERFACE,           L"The object has no such interface."},
    {E_POINTER,               L"A pointer is missing."},
    {E_ABORT,                 cancelledText},
    {E_FAIL,                  L"The operation failed."},
    {E_UNEXPECTED,            L"The operation failed unexpectedly."},
    {E_ACCESSDENIED,          L"Access is denied."},
    {E_OUTOFMEMORY,           L"There is not enough memory."},
    {E_INVALIDARG,            L"An argument is not valid."},
    {CO_E_NOTINITIALIZED,     L"COM was not initialized on this thread."},
    {CLASS_E_NOAGGREGATION,   L"The class does not support aggregation."},
    {REGDB_E_CLASSNOTREG,     L"The class is not registered."},
    {DISP_E_MEMBERNOTFOUND,   L"The object has no such member."},
    {DISP_E_TYPEMISMATCH,     L"The type of the value does not match."},
    {DISP_E_UNKNOWNNAME,      L"The name is unknown."},
    {DISP_E_EXCEPTION,        L"The object raised an exception."},
    {DISP_E_OVERFLOW,         L"The value is out of range."},
    {DISP_E_BADINDEX,         L"The index is not valid."},
    {DISP_E_ARRAYISLOCKED,    L"The array is locked."},
    {DISP_E_BADPARAMCOUNT,    L"The number of arguments is not valid."},
    {TYPE_E_ELEMENTNOTFOUND,  L"The type information has no such element."},
};
// clang-format on

_bstr_t defaultDescription(HRESULT result) {
  for (const DefaultText& known : defaultTexts) {
    if (known.result == result) return _bstr_t(known.text);
  }
  wchar_t text[32];
  std::swprintf(text, sizeof text / sizeof *text, L"Error 0x%08X.", static_cast<unsigned>(result));
  return _bstr_t(text);
}

}  // namespace

_com_error::_com_error(HRESULT result, const wchar_t* description)
    : result_(result), description_(SysAllocString(description)) {}

_com_error::_com_error(const _com_error& other)
    : result_(other.result_), description_(SysAllocString(other.description_)) {}

_com_error::~_com_error() {
  SysFreeString(description_);
}

HRESULT _com_error::Error() const {
  return result_;
}

_bstr_t _com_error::Description() const {
  return description_ != nullptr ? _bstr_t(description_) : defaultDescription(result_);
}

void _com_raise_error(HRESULT result, const wchar_t* description) {
  throw _com_error(result, description);
}
