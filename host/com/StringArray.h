#pragma once

// CStringArray: the host's growing array of wide strings. It owns copies of what is added.

#include <string>
#include <vector>

class CStringArray {
 public:
  // Answers the index of the new string; null is added as the empty string. Throws _com_error without memory.
  long Add(const wchar_t* text);
  long GetSize() const;
  bool IsEmpty() const;
  // Valid until the array changes. Empty for an index outside of it.
  const wchar_t* GetAt(long index) const;
  void RemoveAll();
  // Gives back the memory that no string uses.
  void FreeExtra();

 private:
  std::vector<std::wstring> strings_;
};
