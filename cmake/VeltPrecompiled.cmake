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
