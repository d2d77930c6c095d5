# --- the check of a host ------------------------------------------------------------------------------------------
#
# Like the layer, it leaves the host's symbols undefined, and is compiled once and linked twice: as the library that
# ships, and as an archive for the tests of its inner parts.
velt_sources(veltHostCheckSources hostcheck)
list(FILTER veltHostCheckSources EXCLUDE REGEX "/hostcheck/(program|modules)/")

add_library(velt_hostcheck_objects OBJECT ${veltHostCheckSources})
target_link_libraries(velt_hostcheck_objects PRIVATE velt_common)

add_library(VeltHostCheck SHARED $<TARGET_OBJECTS:velt_hostcheck_objects>)
target_link_libraries(VeltHostCheck PRIVATE velt_instrument Threads::Threads)
set_target_properties(VeltHostCheck PROPERTIES
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}
  INSTALL_RPATH ""
  LINKER_LANGUAGE CXX)
set(veltHostCheckMap "${PROJECT_SOURCE_DIR}/cmake/VeltHostCheck.map")
target_link_options(VeltHostCheck PRIVATE "LINKER:--version-script=${veltHostCheckMap}")
set_property(TARGET VeltHostCheck APPEND PROPERTY LINK_DEPENDS "${veltHostCheckMap}")
target_include_directories(VeltHostCheck INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/velt>)
target_compile_features(VeltHostCheck INTERFACE cxx_std_20)

add_library(velt_hostcheck_internals STATIC $<TARGET_OBJECTS:velt_hostcheck_objects>)
set_target_properties(velt_hostcheck_internals PROPERTIES LINKER_LANGUAGE CXX)
target_link_libraries(velt_hostcheck_internals PUBLIC velt_common Threads::Threads)

# The program loads host and check when it runs, so it links neither.
add_executable(velt-host-check hostcheck/program/Main.cpp)
target_compile_definitions(velt-host-check PRIVATE "VELT_VERSION=\"${PROJECT_VERSION}\"")
target_link_libraries(velt-host-check PRIVATE velt_common CLI11::CLI11 nlohmann_json::nlohmann_json ${CMAKE_DL_LIBS})
add_dependencies(velt-host-check VeltHostCheck)

# The embedded host as a host to be checked.
add_library(VeltEmbeddedHostModule MODULE hostcheck/modules/EmbeddedHost.cpp)
target_link_libraries(VeltEmbeddedHostModule PRIVATE velt_common VeltEmbeddedHost)
set_target_properties(VeltEmbeddedHostModule PROPERTIES
  PREFIX ""
  OUTPUT_NAME embedded-host
  INSTALL_RPATH "$ORIGIN/../lib;$ORIGIN/../.."
  LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/hosts")

velt_precompiled(velt_hidden_headers velt_hostcheck_objects)
velt_in_pieces(velt_hostcheck_objects)
add_dependencies(velt_product VeltHostCheck velt-host-check VeltEmbeddedHostModule)
