#include "host/com/Bstr.h"

#include <cstdint>
#include <cstring>
#include <cwchar>
#include <limits>

#include "embedded/platform/Allocation.h"
#include "embedded/platform/Ledger.h"

namespace {

using Prefix = std::uint32_t;

// The prefix stands directly before the characters and is as wide as one, so both are aligned when the block is.
static_assert(sizeof(Prefix) == sizeof(OLECHAR));

// With the terminator. Where the last character is partly filled, the terminator is the whole one after it.
std::uint64_t charactersFor(std::uint64_t bytes) {
  return (bytes + sizeof(OLECHAR) - 1) / sizeof(OLECHAR) + 1;
}

std::size_t blockFor(std::uint64_t bytes) {
  return sizeof(Prefix) + charactersFor(bytes) * sizeof(OLECHAR);
}

// Counts in 64 bits, because the largest string, its terminator and the prefix together need more than 32.
BSTR allocateBytes(std::uint64_t bytes) {
  if (bytes > std::numeric_limits<Prefix>::max()) return nullptr;
  const std::uint64_t whole = bytes / sizeof(OLECHAR);
  void* block = velt::platform::allocate(velt::platform::Heap::Strings, blockFor(bytes));
  if (block == nullptr) return nullptr;
  auto* prefix = static_cast<Prefix*>(block);
  *prefix = static_cast<Prefix>(bytes);
  const BSTR string = static_cast<BSTR>(static_cast<void*>(prefix + 1));
  string[whole] = L'\0';
  string[charactersFor(bytes) - 1] = L'\0';
  velt::platform::bstrAccount.handOut();
  return string;
}

Prefix* prefixOf(BSTR string) {
  return static_cast<Prefix*>(static_cast<void*>(string)) - 1;
}

}  // namespace

BSTR SysAllocString(const OLECHAR* text) {
  if (text == nullptr) return nullptr;
  const std::uint64_t bytes = std::uint64_t{std::wcslen(text)} * sizeof(OLECHAR);
  BSTR string = allocateBytes(bytes);
  if (string != nullptr) std::memcpy(string, text, bytes);
  return string;
}

BSTR SysAllocStringLen(const OLECHAR* text, UINT characters) {
  const std::uint64_t bytes = std::uint64_t{characters} * sizeof(OLECHAR);
  BSTR string = allocateBytes(bytes);
  if (string != nullptr && text != nullptr) std::memcpy(string, text, bytes);
  return string;
}

BSTR SysAllocStringByteLen(const char* bytes, UINT byteCount) {
  BSTR string = allocateBytes(byteCount);
  if (string != nullptr && bytes != nullptr) std::memcpy(string, bytes, byteCount);
  return string;
}

void SysFreeString(BSTR string) {
  if (string == nullptr) return;
  velt::platform::bstrAccount.giveBack();
  Prefix* const prefix = prefixOf(string);
  velt::platform::deallocate(prefix, blockFor(*prefix));
}

UINT SysStringLen(BSTR string) {
  return SysStringByteLen(string) / static_cast<UINT>(sizeof(OLECHAR));
}

UINT SysStringByteLen(BSTR string) {
  return string != nullptr ? *prefixOf(string) : 0;
}
