#include "host/com/StringArray.h"

#include <cstddef>
#include <new>

#include "host/com/ComError.h"

long CStringArray::Add(const wchar_t* text) {
  try {
    strings_.emplace_back(text != nullptr ? text : L"");
  } catch (const std::bad_alloc&) {
    _com_raise_error(E_OUTOFMEMORY);
  }
  return GetSize() - 1;
}

long CStringArray::GetSize() const {
  return static_cast<long>(strings_.size());
}

bool CStringArray::IsEmpty() const {
  return strings_.empty();
}

const wchar_t* CStringArray::GetAt(long index) const {
  if (index < 0 || index >= GetSize()) return L"";
  return strings_[static_cast<std::size_t>(index)].c_str();
}

void CStringArray::RemoveAll() {
  strings_.clear();
}

void CStringArray::FreeExtra() {
  strings_.shrink_to_fit();
}
