# Folders become lists of sources: a file put into the right folder is built, and no list has to be kept by hand.

set(VELT_PLACEHOLDER "${CMAKE_BINARY_DIR}/generated/Placeholder.cpp")
file(CONFIGURE OUTPUT "${VELT_PLACEHOLDER}" CONTENT "// Stands in for a folder that holds no source yet.\n")

# velt_sources(<out> <folder>...): every .cpp below the folders; the list may be empty and a folder may be missing.
function(velt_sources out)
  set(patterns)
  foreach(folder IN LISTS ARGN)
    list(APPEND patterns "${PROJECT_SOURCE_DIR}/${folder}/*.cpp")
  endforeach()
  file(GLOB_RECURSE found CONFIGURE_DEPENDS ${patterns})
  set(${out} ${found} PARENT_SCOPE)
endfunction()

# velt_sources_or_placeholder(<out> <folder>...): the same, never empty, for targets that must exist anyway.
function(velt_sources_or_placeholder out)
  velt_sources(found ${ARGN})
  if(NOT found)
    set(found "${VELT_PLACEHOLDER}")
  endif()
  set(${out} ${found} PARENT_SCOPE)
endfunction()

# velt_subfolders(<out> <folder>): the names of the folders directly below it.
function(velt_subfolders out folder)
  set(names)
  file(GLOB entries CONFIGURE_DEPENDS LIST_DIRECTORIES true "${PROJECT_SOURCE_DIR}/${folder}/*")
  foreach(entry IN LISTS entries)
    if(IS_DIRECTORY "${entry}")
      get_filename_component(name "${entry}" NAME)
      list(APPEND names "${name}")
    endif()
  endforeach()
  set(${out} ${names} PARENT_SCOPE)
endfunction()
