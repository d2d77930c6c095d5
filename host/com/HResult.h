#pragma once

// HRESULT: what a method answers. Negative means failure, anything else success; S_FALSE is a success.

#include <cstdint>

using HRESULT = std::int32_t;

constexpr bool SUCCEEDED(HRESULT result) {
  return result >= 0;
}
constexpr bool FAILED(HRESULT result) {
  return result < 0;
}

namespace velt::com {
constexpr HRESULT failure(std::uint32_t code) {
  return static_cast<HRESULT>(code);
}
}  // namespace velt::com

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = velt::com::failure(0x80004001U);
inline constexpr HRESULT E_NOINTERFACE = velt::com::failure(0x80004002U);
inline constexpr HRESULT E_POINTER = velt::com::failure(0x80004003U);
inline constexpr HRESULT E_FAIL = velt::com::failure(0x80004005U);
inline constexpr HRESULT E_UNEXPECTED = velt::com::failure(0x8000FFFFU);
inline constexpr HRESULT E_ACCESSDENIED = velt::com::failure(0x80070005U);
inline constexpr HRESULT E_OUTOFMEMORY = velt::com::failure(0x8007000EU);
inline constexpr HRESULT E_INVALIDARG = velt::com::failure(0x80070057U);
inline constexpr HRESULT CO_E_NOTINITIALIZED = velt::com::failure(0x800401F0U);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = velt::com::failure(0x80040110U);
inline constexpr HRESULT REGDB_E_CLASSNOTREG = velt::com::failure(0x80040154U);
inline constexpr HRESULT DISP_E_MEMBERNOTFOUND = velt::com::failure(0x80020003U);
inline constexpr HRESULT DISP_E_TYPEMISMATCH = velt::com::failure(0x80020005U);
inline constexpr HRESULT DISP_E_UNKNOWNNAME = velt::com::failure(0x80020006U);
inline constexpr HRESULT DISP_E_EXCEPTION = velt::com::failure(0x80020009U);
inline constexpr HRESULT DISP_E_OVERFLOW = velt::com::failure(0x8002000AU);
inline constexpr HRESULT DISP_E_BADINDEX = velt::com::failure(0x8002000BU);
inline constexpr HRESULT DISP_E_ARRAYISLOCKED = velt::com::failure(0x8002000DU);
inline constexpr HRESULT DISP_E_BADPARAMCOUNT = velt::com::failure(0x8002000EU);
inline constexpr HRESULT TYPE_E_ELEMENTNOTFOUND = velt::com::failure(0x8002802BU);
