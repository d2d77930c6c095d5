#pragma once

// CStringArray: the host's growing array of wide strings.

#include <string>
#include <vector>

class CStringArray {
 public:
  long Add(const wchar_t* text);
  long GetSize() const;
  bool IsEmpty() const;
  const wchar_t* GetAt(long index) const;  // valid until the array changes
  void RemoveAll();
  void FreeExtra();

 private:
  std::vector<std::wstring> strings_;
};
