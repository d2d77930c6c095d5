# --- veltprops ----------------------------------------------------------------------------------------------------
find_package(CLI11 REQUIRED)
find_package(nlohmann_json REQUIRED)
find_package(fmt REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(utf8proc REQUIRED IMPORTED_TARGET libutf8proc)  # the width of characters on a terminal
find_package(pegtl REQUIRED PATHS /usr/share/pegtl/cmake)         # conditions; headers only

# The code of the tool is an archive, so that tests reach it; Main.cpp alone belongs to the executable.
velt_sources(veltToolSources tool)
set(veltToolMain "${PROJECT_SOURCE_DIR}/tool/Main.cpp")
list(REMOVE_ITEM veltToolSources "${veltToolMain}")
if(NOT veltToolSources)
  set(veltToolSources "${VELT_PLACEHOLDER}")
endif()

configure_file("${PROJECT_SOURCE_DIR}/cmake/ToolVersion.cpp.in" "${CMAKE_BINARY_DIR}/generated/ToolVersion.cpp" @ONLY)
add_library(velt_tool STATIC ${veltToolSources} "${CMAKE_BINARY_DIR}/generated/ToolVersion.cpp")
target_link_libraries(velt_tool
  PRIVATE velt_common velt_view PkgConfig::utf8proc taocpp::pegtl
  PUBLIC VeltPalette VeltPropData VeltEmbeddedHost velt_samples CLI11::CLI11 nlohmann_json::nlohmann_json ${VELT_FMT})
# What JSON and formatted texts are made with takes longest to read, and half of the tool makes them.
velt_precompiled_holder(velt_tool_headers ${VELT_STANDARD_HEADERS} <fmt/format.h> <nlohmann/json.hpp>)
if(TARGET velt_tool_headers)
  target_link_libraries(velt_tool_headers PRIVATE nlohmann_json::nlohmann_json ${VELT_FMT})
endif()
velt_precompiled(velt_tool_headers velt_tool)
velt_in_pieces(velt_tool)

if(EXISTS "${veltToolMain}")
  add_executable(veltprops "${veltToolMain}")
  target_link_libraries(veltprops PRIVATE velt_common velt_tool)
endif()

# The manual pages come out of the program itself: the description that it reads its command line with.
if(TARGET veltprops)
  set(VELT_MAN_DIR "${CMAKE_BINARY_DIR}/man")
  add_custom_command(OUTPUT "${VELT_MAN_DIR}/veltprops.1"
    COMMAND veltprops man-pages "${VELT_MAN_DIR}"
    DEPENDS veltprops)
  add_custom_target(velt_man_pages ALL DEPENDS "${VELT_MAN_DIR}/veltprops.1")
endif()

# --- sample plug-ins: one module per folder -----------------------------------------------------------------------
set(VELT_PLUGIN_DIR "${CMAKE_BINARY_DIR}/plugins")
set(VELT_PLUGIN_TARGETS)
velt_subfolders(veltPlugins plugins)
foreach(name IN LISTS veltPlugins)
  velt_sources(sources plugins/${name})
  if(sources)
    add_library(plugin_${name} MODULE ${sources})
    target_link_libraries(plugin_${name} PRIVATE velt_common VeltEmbeddedHost)
    set_target_properties(plugin_${name} PROPERTIES
      PREFIX ""
      OUTPUT_NAME "${name}"
      INSTALL_RPATH ""
      LIBRARY_OUTPUT_DIRECTORY "${VELT_PLUGIN_DIR}")
    list(APPEND VELT_PLUGIN_TARGETS plugin_${name})
  endif()
endforeach()

# --- what ships ---------------------------------------------------------------------------------------------------
add_custom_target(velt_product)
add_dependencies(velt_product VeltPropData VeltPalette VeltDxf VeltEmbeddedHost ${VELT_PLUGIN_TARGETS})
if(TARGET veltprops)
  add_dependencies(velt_product veltprops velt_man_pages)
endif()

# --- examples: one executable per file, over the embedded host -----------------------------------------------------
file(GLOB veltExamples CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/examples/*.cpp")
foreach(source IN LISTS veltExamples)
  get_filename_component(name "${source}" NAME_WE)
  add_executable(example_${name} "${source}")
  target_link_libraries(example_${name} PRIVATE velt_common VeltPalette VeltPropData VeltEmbeddedHost)
endforeach()

# --- a host of its own: links the layer alone, and shows it what it needs -----------------------------------------
# A layer under the sanitizers needs more, run-time types of classes that the host never makes, so it is left out there.
if(NOT VELT_SANITIZE)
  velt_sources(veltMinimalHost examples/minimal-host)
  add_executable(example_minimal_host ${veltMinimalHost})
  target_link_libraries(example_minimal_host PRIVATE velt_common VeltPropData)
  set_target_properties(example_minimal_host PROPERTIES CXX_VISIBILITY_PRESET default)
  target_compile_options(example_minimal_host PRIVATE -fPIC)  # tests make shared objects of its parts
endif()
