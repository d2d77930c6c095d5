include(GoogleTest)

# --- what tests share ---------------------------------------------------------------------------------------------
#
# The code of tests is part of programs alone, so all of it is compiled as such, and shares its precompiled headers.
# Its functions are visible, so that one that bears the name of a host function takes its place everywhere.
function(velt_test_code)
  foreach(target IN LISTS ARGN)
    set_target_properties(${target} PROPERTIES
      POSITION_INDEPENDENT_CODE OFF
      CXX_VISIBILITY_PRESET default
      VISIBILITY_INLINES_HIDDEN OFF)
    target_compile_options(${target} PRIVATE -fPIE)
  endforeach()
endfunction()

velt_precompiled_holder(velt_test_headers ${VELT_STANDARD_HEADERS} <gmock/gmock.h> <gtest/gtest.h>)
if(TARGET velt_test_headers)
  target_link_libraries(velt_test_headers PRIVATE GTest::gmock GTest::gtest)
  velt_test_code(velt_test_headers)
endif()

velt_sources_or_placeholder(veltSupportSources tests/support)
add_library(velt_test_support STATIC ${veltSupportSources})
target_link_libraries(velt_test_support
  PUBLIC velt_common VeltEmbeddedHost velt_samples GTest::gmock GTest::gtest)
if(VELT_LIBCXX)
  target_include_directories(velt_test_support SYSTEM PUBLIC "${PROJECT_SOURCE_DIR}/tests/support/libcxx")
else()
  target_link_libraries(velt_test_support PUBLIC rapidcheck rapidcheck_gtest)
endif()
velt_test_code(velt_test_support)
velt_precompiled(velt_test_headers velt_test_support)
# Where golden files, plug-ins and the build stand. Only one source is compiled with these, so that a build in another
# folder compiles the same otherwise.
set(VELT_TEST_PLUGIN_DIR "${CMAKE_BINARY_DIR}/test-plugins")
set_source_files_properties("${PROJECT_SOURCE_DIR}/tests/support/Places.cpp" PROPERTIES COMPILE_DEFINITIONS
  "VELT_SOURCE_DIR=\"${PROJECT_SOURCE_DIR}\";VELT_BINARY_DIR=\"${CMAKE_BINARY_DIR}\";VELT_PLUGIN_DIR=\"${VELT_PLUGIN_DIR}\";VELT_TEST_PLUGIN_DIR=\"${VELT_TEST_PLUGIN_DIR}\"")

# --- plug-ins that behave badly, and one that does not: one module per file of tests/plugins that is no test --------
file(GLOB veltTestPlugins CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/plugins/*.cpp")
list(FILTER veltTestPlugins EXCLUDE REGEX "Test\\.cpp$")
set(veltTestPluginTargets)
foreach(source IN LISTS veltTestPlugins)
  get_filename_component(name "${source}" NAME_WE)
  add_library(test_plugin_${name} MODULE "${source}")
  target_link_libraries(test_plugin_${name} PRIVATE velt_common VeltEmbeddedHost)
  set_target_properties(test_plugin_${name} PROPERTIES
    PREFIX ""
    OUTPUT_NAME "${name}"
    LIBRARY_OUTPUT_DIRECTORY "${VELT_TEST_PLUGIN_DIR}")
  list(APPEND veltTestPluginTargets test_plugin_${name})
endforeach()

# --- programs that tests run: one per file of tests/<folder>/programs -----------------------------------------------
add_executable(recorded_palette tests/recorder/programs/RecordedPalette.cpp)
target_link_libraries(recorded_palette PRIVATE velt_common VeltPropData VeltEmbeddedHost)

# --- one executable per folder of tests/ --------------------------------------------------------------------------
#
# Tests of the folders of the layer and of the palette library link the archives and reach their inner parts; tests of the
# host and of its check see no layer; all others link the libraries as they ship.
set(veltLayerFolders text errors container propdata)
set(veltNoLayerFolders host holders dxf samples embedded house)
# What `make asan-layer` runs: the tests of what a CAD program loads.
set(veltSanitizedFolders holders ${veltLayerFolders} palette contract)
add_custom_target(velt_layer_tests)

velt_subfolders(veltTestFolders tests)
foreach(folder IN LISTS veltTestFolders)
  if(folder STREQUAL "support" OR (folder STREQUAL "desktop" AND NOT TARGET velt_desktop))
    continue()
  endif()
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/${folder}/*Test.cpp")
  if(sources)
    set(target velt_test_${folder})
    add_executable(${target} ${sources})
    target_link_libraries(${target} PRIVATE velt_test_support)
    if(folder IN_LIST veltLayerFolders)
      target_link_libraries(${target} PRIVATE velt_propdata_internals)
    elseif(folder STREQUAL "palette")
      target_link_libraries(${target} PRIVATE velt_palette_internals velt_propdata_internals)
    elseif(folder STREQUAL "view")
      target_link_libraries(${target} PRIVATE velt_view)
    elseif(folder STREQUAL "tool")
      target_link_libraries(${target} PRIVATE velt_tool)
    elseif(folder STREQUAL "desktop")
      target_link_libraries(${target} PRIVATE velt_desktop Qt6::Test)
    elseif(folder STREQUAL "hostcheck")
      target_link_libraries(${target} PRIVATE velt_hostcheck_internals)
    elseif(NOT folder IN_LIST veltNoLayerFolders)
      target_link_libraries(${target} PRIVATE VeltPalette VeltPropData)
    endif()
    target_link_libraries(${target} PRIVATE VeltEmbeddedHost GTest::gmock_main)
    set_target_properties(${target} PROPERTIES
      ENABLE_EXPORTS ON
      DEFINE_SYMBOL "")
    velt_in_pieces(${target})
    set_target_properties(${target} PROPERTIES UNITY_BUILD_BATCH_SIZE 32)
    velt_test_code(${target})
    if(NOT folder STREQUAL "desktop")  # Qt's programs are compiled as libraries are, which no other test is
      velt_precompiled(velt_test_headers ${target})
    endif()
    if(VELT_PLUGIN_TARGETS OR veltTestPluginTargets)
      add_dependencies(${target} ${VELT_PLUGIN_TARGETS} ${veltTestPluginTargets})
    endif()
    if(folder STREQUAL "hostcheck")
      add_dependencies(${target} velt-host-check VeltEmbeddedHostModule)
    endif()
    if(folder STREQUAL "tool" AND TARGET veltprops)
      add_dependencies(${target} veltprops)
    endif()
    set(labels)
    if(folder IN_LIST veltSanitizedFolders)
      set(labels LABELS layer)
      add_dependencies(velt_layer_tests ${target})
    endif()
    gtest_discover_tests(${target}
      TEST_PREFIX "${folder}."
      DISCOVERY_MODE PRE_TEST
      DISCOVERY_TIMEOUT 120
      WORKING_DIRECTORY "${CMAKE_BINARY_DIR}"
      PROPERTIES TIMEOUT 300 ${labels})
  endif()

  # Tests written as scripts: <Name>Test.py is run as it is; exit code 77 means skipped. They take longest, so they begin
  # first, and the many short ones fill the other cores.
  file(GLOB_RECURSE scripts CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/${folder}/*Test.py")
  foreach(script IN LISTS scripts)
    get_filename_component(name "${script}" NAME_WE)
    add_test(NAME ${folder}.${name} COMMAND "${VELT_PYTHON}" "${script}")
    set_tests_properties(${folder}.${name} PROPERTIES
      SKIP_RETURN_CODE 77
      TIMEOUT 600
      COST 100
      ENVIRONMENT "PYTHONDONTWRITEBYTECODE=1;VELT_SOURCE_DIR=${PROJECT_SOURCE_DIR};VELT_BINARY_DIR=${CMAKE_BINARY_DIR};VELT_GOLDEN_OUT=${CMAKE_BINARY_DIR}/golden;VELT_CXX=${CMAKE_CXX_COMPILER};VELT_INSTRUMENTED=${VELT_INSTRUMENTED}")
  endforeach()
endforeach()

# --- every public header compiles on its own ----------------------------------------------------------------------
file(GLOB_RECURSE veltPublicHeaders CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}"
  "${PROJECT_SOURCE_DIR}/host/*.h" "${PROJECT_SOURCE_DIR}/holders/*.h")
if(EXISTS "${PROJECT_SOURCE_DIR}/propdata/VeltPropData.h")
  list(APPEND veltPublicHeaders propdata/VeltPropData.h)
endif()
list(APPEND veltPublicHeaders palette/Export.h palette/Palette.h hostcheck/HostCheck.h hostcheck/HostModule.h embedded/sources/Plugin.h
  embedded/sources/PluginProperty.h)
set(veltHeaderUnits)
foreach(header IN LISTS veltPublicHeaders)
  set(unit "${CMAKE_BINARY_DIR}/generated/headers/${header}.cpp")
  file(CONFIGURE OUTPUT "${unit}" CONTENT "#include \"${header}\"\n")
  list(APPEND veltHeaderUnits "${unit}")
endforeach()
if(veltHeaderUnits)
  add_library(velt_header_checks OBJECT ${veltHeaderUnits})
  target_link_libraries(velt_header_checks PRIVATE velt_common)
endif()
