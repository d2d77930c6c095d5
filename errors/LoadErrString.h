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
inline constexpr int nameNotResolved = 1010;  // a format: the property's name
inline constexpr int noPropertyExtension = 1011;
inline constexpr int noExpander = 1014;  // a format when an element write failed: the property's name
inline constexpr int elementStrings = 1015;
inline constexpr int elementValue = 1016;
inline constexpr int noPropertyBrowsing = 1018;
inline constexpr int nameNotFound = 1019;  // a format: the property's name
inline constexpr int noCategories = 1020;
inline constexpr int categoryNotFound = 1021;
inline constexpr int categoryName = 1022;
inline constexpr int defaultCategory = 1023;
}  // namespace message

// The module from which messages and predefined category names are read: null until the first of the two
// lookups loads its library into it, then never changed. Set without a lock, on the palette's thread.
extern HMODULE g_hPropRes;

}  // namespace velt::errors

// The message's text, at most 2,047 characters; empty when the library or the string cannot be had. A library
// that cannot be loaded is tried again at the next call.
VELT_PROPDATA_EXPORT CStdStr<wchar_t> LoadErrString(int id);
