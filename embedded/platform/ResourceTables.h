#pragma once

// The resource libraries that LoadLibraryExW and loadResourceDll find: built in, so that a process needs no files, and
// open to change, so that a test can take one away, reword a text or bring one of its own.
//
// Names are compared without regard to case.
// Ownership: a handle stays a handle for the life of the process; once its library is removed it yields no texts, and
// yields them again when the library comes back.
// Threads: every function may be called on every thread.

#include <string>
#include <string_view>

#include "host/platform/Resources.h"

namespace velt::platform {

class ResourceTables {
 public:
  // Adds or replaces one text; brings the library into being when there is none of that name.
  static void setText(std::wstring_view library, UINT id, std::wstring_view text);
  static void removeText(std::wstring_view library, UINT id);
  // An empty library, or what is left of a removed one, emptied.
  static void addLibrary(std::wstring_view library);
  static void removeLibrary(std::wstring_view library);
  // Back to the built-in libraries with their built-in texts, and no others.
  static void restore();
};

}  // namespace velt::platform
