#pragma once

// The texts of the resource library "PropertyBarRes.dll": the messages of the property layer by their ids (see
// errors/LoadErrString.h), and as 1023 the heading of properties whose category has no name. "%ls" is the place for the
// name of the property in the messages that the layer formats; no other text holds a percent sign.

#include "host/com/Types.h"

namespace velt::platform {

struct Message {
  UINT id;
  const wchar_t* text;
};

// clang-format off
inline constexpr Message messages[] = {
    // id   text
    {1001, L"COM could not be initialized."},
    {1002, L"The automation object could not be created."},
    {1003, L"The object cannot be automated: it has no IDispatch interface."},
    {1004, L"The automation object is not tied to a drawing object: it has no IVeltBaseObject interface."},
    {1005, L"The type information of the object could not be obtained."},
    {1006, L"The object has no type information."},
    {1007, L"The attributes of the type information could not be read."},
    {1008, L"The description of a function could not be read from the type information."},
    {1009, L"The name and documentation of a member could not be read from the type information."},
    {1010, L"The property \"%ls\" could not be resolved to a member of the object."},
    {1011, L"The object does not tell how to show its properties: it has no IOPMPropertyExtension interface."},
    // The layer also shows it without filling the name in, so the sentence must make sense without it.
    {1014, L"The elements of the property are not accessible. [%ls]"},
    {1015, L"The names of the property's elements could not be read."},
    {1016, L"The value of one of the property's elements could not be read."},
    {1018, L"The choices of the property are not available: the object has no IPerPropertyBrowsing interface."},
    {1019, L"The object has no property \"%ls\"."},
    {1020, L"The object does not categorize its properties: it has no ICategorizeProperties interface."},
    {1021, L"The category of the property could not be found."},
    {1022, L"The name of the property's category could not be read."},
    {1023, L"Misc"},
};
// clang-format on

}  // namespace velt::platform
