#include "host/com/Bstr.h"

#include <cstdint>
#include <cwchar>

#include "embedded/com/Blocks.h"

using velt::com::makeString;
using velt::com::StringPrefix;

namespace {

StringPrefix* prefixOf(BSTR string) {
  return static_cast<StringPrefix*>(static_cast<void*>(string)) - 1;
}

}  // namespace

BSTR SysAllocString(const OLECHAR* text) {
  return text != nullptr ? makeString(text, std::uint64_t{std::wcslen(text)} * sizeof(OLECHAR)) : nullptr;
}

BSTR SysAllocStringLen(const OLECHAR* text, UINT characters) {
  const std::uint64_t bytes = std::uint64_t{characters} * sizeof(OLECHAR);
  return text != nullptr ? makeString(text, bytes) : makeString(bytes);
}

BSTR SysAllocStringByteLen(const char* bytes, UINT byteCount) {
  return bytes != nullptr ? makeString(bytes, byteCount) : makeString(byteCount);
}

void SysFreeString(BSTR string) {
  if (string == nullptr) return;
  velt::platform::bstrAccount.giveBack();
  StringPrefix* const prefix = prefixOf(string);
  velt::platform::deallocate(prefix, velt::com::stringBlockFor(*prefix));
}

UINT SysStringLen(BSTR string) {
  return SysStringByteLen(string) / static_cast<UINT>(sizeof(OLECHAR));
}

UINT SysStringByteLen(BSTR string) {
  return string != nullptr ? *prefixOf(string) : 0;
}
