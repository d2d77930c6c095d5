#pragma once

namespace velt::tool {

// Of the whole project; the build writes them.
extern const char* const version;
// Of that version, as 2026-11-22.
extern const char* const releaseDate;
// Where an installation keeps plug-ins, from the folder of the program on.
extern const char* const pluginFolderFromProgram;

}  // namespace velt::tool
