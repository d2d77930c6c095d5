#pragma once

// Texts of failures, loaded by number from the message library "PropertyBarRes.dll".

#include "host/platform/Resources.h"
#include "text/CStdStr.h"
#include "text/Export.h"

namespace velt::errors {

// Numbers of the messages, in the library's string table.
namespace message {
inline constexpr int comInitialisation = 1001;
inline constexpr int instanceCreation = 1002;
inline constexpr int noDispatch = 1003;
inline constexpr int noBaseObject = 1004;
inline constexpr int typeInfoFailed = 1005;
inline constexpr int typeInfoMissing = 1006;
inline constexpr int typeAttributes = 1007;
inline constexpr int functionDescription = 1008;
inline constexpr int documentation = 1009;
// A format for the property's name.
inline constexpr int nameNotResolved = 1010;
inline constexpr int noPropertyExtension = 1011;
// Shown as it is, and after a failed write of an element as a format for the property's name.
inline constexpr int noExpander = 1014;
inline constexpr int elementStrings = 1015;
inline constexpr int elementValue = 1016;
inline constexpr int noPropertyBrowsing = 1018;
// A format for the property's name.
inline constexpr int nameNotFound = 1019;
inline constexpr int noCategories = 1020;
inline constexpr int categoryNotFound = 1021;
inline constexpr int categoryName = 1022;
inline constexpr int defaultCategory = 1023;
}  // namespace message

// The module from which messages and the names of predefined categories are read. Null until the first of the two
// look-ups loads its library; not changed after that. Set without a lock, on the palette's thread.
extern HMODULE g_hPropRes;

}  // namespace velt::errors

// The text of a message, at most 2,047 characters; empty when the library, the string or memory for it is missing. A
// library that could not be loaded is tried again at the next call.
VELT_PROPDATA_EXPORT CStdStr<wchar_t> LoadErrString(int id);
