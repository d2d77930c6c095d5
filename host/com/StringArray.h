#pragma once

// CStringArray: the host's growing array of wide strings. It owns copies of what is added.

#include <string>
#include <vector>

// Called by: GetPropertiesInfo for the first entity of a class, which lists there the names of all properties that can
// be put. Failure: Add throws, and the query ends with the description of the error as its message.
class CStringArray {
 public:
  // Answers the index of the new string; null is added as the empty string. Throws _com_error without memory.
  long Add(const wchar_t* text);
  // Number of strings.
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
