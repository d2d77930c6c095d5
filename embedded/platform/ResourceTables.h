#pragma once

// The resource libraries that LoadLibraryExW and loadResourceDll find. They are built in, so that a process needs no
// files, and a test can remove one, reword a text or add a library of its own.
//
// Upper and lower case of names do not differ.
// Ownership: a handle stays valid for the life of the process. While its library is removed it yields no texts, and
// again does when the library is added anew.
// Threads: every function may be called on every thread.

#include <string>
#include <string_view>

#include "host/platform/Resources.h"

namespace velt::platform {

class ResourceTables {
 public:
  // Adds or replaces one text; adds the library when there is none of that name.
  static void setText(std::wstring_view library, UINT id, std::wstring_view text);
  static void removeText(std::wstring_view library, UINT id);
  // Adds an empty library; one of that name loses its texts.
  static void addLibrary(std::wstring_view library);
  static void removeLibrary(std::wstring_view library);
  // Makes the built-in libraries with their built-in texts the only ones.
  static void restore();
};

}  // namespace velt::platform
