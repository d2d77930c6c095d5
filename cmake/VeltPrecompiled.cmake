# Precompiled headers: what nearly every unit includes is read once. They only save time. Every unit still includes
# what it uses, and a build with VELT_PCH off, as clang-tidy and the header checks want it, notices where one does not.
#
# Not in optimised builds by default: there g++ 12 warns of the standard library's own copies, which it takes for ours
# when they come out of a precompiled header.
set(veltPrecompile OFF)
if(CMAKE_BUILD_TYPE STREQUAL "Debug")
  set(veltPrecompile ON)
endif()
option(VELT_PCH "Precompile the headers that nearly every unit includes" ${veltPrecompile})

# velt_precompiled_holder(<name> <header>...): one set of headers, shared by all targets that are compiled alike.
# Compilers refuse it where the code is for a library here and for a program there, or visible here and hidden there.
function(velt_precompiled_holder name)
  if(VELT_PCH)
    add_library(${name} OBJECT "${VELT_PLACEHOLDER}")
    target_link_libraries(${name} PRIVATE velt_common)
    target_precompile_headers(${name} PRIVATE ${ARGN})
  endif()
endfunction()

# velt_precompiled(<holder> <target>...): these targets use the headers of the holder.
function(velt_precompiled holder)
  if(VELT_PCH)
    foreach(target IN LISTS ARGN)
      target_precompile_headers(${target} REUSE_FROM ${holder})
    endforeach()
  endif()
endfunction()

set(VELT_STANDARD_HEADERS
  <algorithm> <array> <atomic> <cmath> <cstddef> <cstdint> <cstring> <deque> <filesystem> <functional> <limits> <map>
  <memory> <mutex> <new> <numbers> <optional> <set> <span> <sstream> <stdexcept> <string> <string_view> <unordered_map>
  <utility> <variant> <vector>)

velt_precompiled_holder(velt_hidden_headers ${VELT_STANDARD_HEADERS})
velt_precompiled_holder(velt_visible_headers ${VELT_STANDARD_HEADERS})
if(VELT_PCH)
  set_target_properties(velt_visible_headers PROPERTIES CXX_VISIBILITY_PRESET default VISIBILITY_INLINES_HIDDEN OFF)
endif()

# Debug builds hand the compiler several files in one piece: what one of them has instantiated the next ones have too, and
# they compile in a fraction of the time. So names without linkage are unique among the files of a piece, and an include
# that is missing shows with VELT_UNITY off alone, as clang-tidy wants it.
option(VELT_UNITY "Compile several files at a time" ${veltPrecompile})
set(VELT_FILES_PER_PIECE 32 CACHE STRING "How many files of the product make a piece; fewer where single files are changed often")

# velt_in_pieces(<target>...): the files of these targets are compiled so.
function(velt_in_pieces)
  set_target_properties(${ARGN} PROPERTIES UNITY_BUILD ${VELT_UNITY} UNITY_BUILD_BATCH_SIZE ${VELT_FILES_PER_PIECE})
  foreach(target IN LISTS ARGN)
    # g++ warns of members of types without linkage wherever a file is included, as all files of a piece are.
    target_compile_options(${target} PRIVATE $<$<AND:$<BOOL:${VELT_UNITY}>,$<CXX_COMPILER_ID:GNU>>:-Wno-subobject-linkage>)
  endforeach()
endfunction()

# velt_folders_in_pieces(<target> <file>...): the same, and no piece holds files of two folders, so that names without
# linkage are unique in a folder.
function(velt_folders_in_pieces target)
  velt_in_pieces(${target})
  set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
  foreach(file IN LISTS ARGN)
    cmake_path(GET file PARENT_PATH folder)
    cmake_path(RELATIVE_PATH folder BASE_DIRECTORY "${PROJECT_SOURCE_DIR}")
    string(MAKE_C_IDENTIFIER "${folder}" folder)
    list(APPEND filesOf_${folder} "${file}")
    list(LENGTH filesOf_${folder} count)
    math(EXPR piece "(${count} - 1) / ${VELT_FILES_PER_PIECE}")
    set_source_files_properties("${file}" PROPERTIES UNITY_GROUP "${folder}_${piece}")
  endforeach()
endfunction()
