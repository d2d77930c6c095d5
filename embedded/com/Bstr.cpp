#include "host/com/Bstr.h"

#include <cstdint>
#include <cwchar>

#include "embedded/com/Blocks.h"

using velt::com::makeString;
using velt::com::prefixOf;
using velt::com::StringPrefix;

namespace {

// Not inline, so that SysFreeString itself calls nothing. The prefix of a string that was freed before tells nothing of its
// size, so that the heap is asked: a second free is recognised among blocks of the same size.
[[gnu::noinline]] void freeThoroughly(StringPrefix* prefix) {
  velt::platform::bstrAccount.giveBack();
  velt::platform::deallocate(prefix);
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
  StringPrefix* const prefix = prefixOf(string);
  if (!velt::platform::deallocateAtOnce(prefix, velt::com::leastStringBlockFor(*prefix)))
    return freeThoroughly(prefix);
  velt::platform::bstrAccount.giveBack();
}

UINT SysStringLen(BSTR string) {
  return SysStringByteLen(string) / static_cast<UINT>(sizeof(OLECHAR));
}

UINT SysStringByteLen(BSTR string) {
  return string != nullptr ? *prefixOf(string) : 0;
}
