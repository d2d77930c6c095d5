#pragma once

// HRESULT: what a method answers. Negative means failure, anything else success; S_FALSE is a success.

#include <cstdint>

using HRESULT = std::int32_t;

// Whether a method did what it was asked. The layer tests results by these two alone, and looks at no particular one,
// but for E_NOTIMPL of GetPredefinedValue and E_NOINTERFACE of a query for IDynamicProperty2.
constexpr bool SUCCEEDED(HRESULT result) {
  return result >= 0;
}
constexpr bool FAILED(HRESULT result) {
  return result < 0;
}

namespace velt::com {
// The failure of this code, as it is written: failure(0x80004001U).
constexpr HRESULT failure(std::uint32_t code) {
  return static_cast<HRESULT>(code);
}
}  // namespace velt::com

// Done.
inline constexpr HRESULT S_OK = 0;
// Done, or there was nothing to do: a success.
inline constexpr HRESULT S_FALSE = 1;
// The method is not offered.
inline constexpr HRESULT E_NOTIMPL = velt::com::failure(0x80004001U);
// The object has no such interface.
inline constexpr HRESULT E_NOINTERFACE = velt::com::failure(0x80004002U);
// A pointer is missing.
inline constexpr HRESULT E_POINTER = velt::com::failure(0x80004003U);
// Failed, without a reason.
inline constexpr HRESULT E_FAIL = velt::com::failure(0x80004005U);
// The object is in no state for that: it is bound to no entity, for example.
inline constexpr HRESULT E_UNEXPECTED = velt::com::failure(0x8000FFFFU);
// The value cannot be changed now.
inline constexpr HRESULT E_ACCESSDENIED = velt::com::failure(0x80070005U);
// No memory.
inline constexpr HRESULT E_OUTOFMEMORY = velt::com::failure(0x8007000EU);
// An argument makes no sense.
inline constexpr HRESULT E_INVALIDARG = velt::com::failure(0x80070057U);
// COM was not started on this thread.
inline constexpr HRESULT CO_E_NOTINITIALIZED = velt::com::failure(0x800401F0U);
// The class is not made as part of another object.
inline constexpr HRESULT CLASS_E_NOAGGREGATION = velt::com::failure(0x80040110U);
// No class has this id.
inline constexpr HRESULT REGDB_E_CLASSNOTREG = velt::com::failure(0x80040154U);
// No member has this DISPID.
inline constexpr HRESULT DISP_E_MEMBERNOTFOUND = velt::com::failure(0x80020003U);
// The value is of a type that does not fit.
inline constexpr HRESULT DISP_E_TYPEMISMATCH = velt::com::failure(0x80020005U);
// No member has this name.
inline constexpr HRESULT DISP_E_UNKNOWNNAME = velt::com::failure(0x80020006U);
// The member tells more in an EXCEPINFO.
inline constexpr HRESULT DISP_E_EXCEPTION = velt::com::failure(0x80020009U);
// The number does not fit into the type.
inline constexpr HRESULT DISP_E_OVERFLOW = velt::com::failure(0x8002000AU);
// No element has this index, or no dimension this number.
inline constexpr HRESULT DISP_E_BADINDEX = velt::com::failure(0x8002000BU);
// The elements of the array are being accessed.
inline constexpr HRESULT DISP_E_ARRAYISLOCKED = velt::com::failure(0x8002000DU);
// Too many arguments, or too few.
inline constexpr HRESULT DISP_E_BADPARAMCOUNT = velt::com::failure(0x8002000EU);
// The type information has no such member.
inline constexpr HRESULT TYPE_E_ELEMENTNOTFOUND = velt::com::failure(0x8002802BU);
