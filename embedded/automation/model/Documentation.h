#pragma once

// Giving out the name and the help text of a type or a member.

#include "holders/StringHolder.h"
#include "host/com/Bstr.h"
#include "host/com/HResult.h"

namespace velt::automation {

// Fills what is asked for (null: not asked for); there are no help files. Nothing is filled when memory is exhausted.
inline HRESULT giveDocumentation(const wchar_t* name, const wchar_t* help, BSTR* nameOut, BSTR* helpOut,
                                 DWORD* helpContext = nullptr, BSTR* helpFile = nullptr) {
  holders::StringHolder nameCopy;
  holders::StringHolder helpCopy;
  if (nameOut != nullptr) nameCopy = holders::StringHolder(name);
  if (helpOut != nullptr) helpCopy = holders::StringHolder(help);
  if ((nameOut != nullptr && !nameCopy) || (helpOut != nullptr && !helpCopy)) return E_OUTOFMEMORY;
  if (nameOut != nullptr) *nameOut = nameCopy.detach();
  if (helpOut != nullptr) *helpOut = helpCopy.detach();
  if (helpContext != nullptr) *helpContext = 0;
  if (helpFile != nullptr) *helpFile = nullptr;
  return S_OK;
}

}  // namespace velt::automation
