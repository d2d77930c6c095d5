#include "errors/LoadErrString.h"

#include "errors/Guard.h"
#include "errors/Messages.h"

namespace velt::errors {

HMODULE g_hPropRes = nullptr;

CStdStr<wchar_t> loadMessage(int id) {
  constexpr INT longestMessage = 2047;

  // QUIRK(shared_resource_handle): messages are read from whichever library was loaded first, which is the
  // one with the category names when a category was looked up before any message. Resource authors depend on
  // it: the two libraries carry their numbers without clashes.
  if (g_hPropRes == nullptr)
    g_hPropRes = LoadLibraryExW(L"PropertyBarRes.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
  wchar_t buffer[2052];
  buffer[0] = 0;
  // QUIRK(message_result_unexamined): the message is what stands in the buffer, since libraries of the host tell 0
  // characters of a text that they wrote.
  [[maybe_unused]] const INT characters =
      LoadStringW(g_hPropRes, static_cast<UINT>(id), buffer, longestMessage);
  return CStdStr<wchar_t>(buffer);
}

bool failWith(CStdStr<wchar_t>& errorText, int id) {
  errorText = loadMessage(id);
  return false;
}

bool failWith(CStdStr<wchar_t>& errorText, int id, const CStdStr<wchar_t>& name) {
  errorText.Format(loadMessage(id).c_str(), name);
  return false;
}

}  // namespace velt::errors

CStdStr<wchar_t> LoadErrString(int id) {
  return velt::errors::guarded(CStdStr<wchar_t>(), [&] { return velt::errors::loadMessage(id); });
}
