# What every target of the project sees: its own root as the include root, its warnings, its instrumentation.
add_library(velt_common INTERFACE)
# A host's own headers, where they stand under the names of ours (host/database/VkCmColor.h), take the place of these;
# all others stay. The layer is then that host's alone: docs/host.md.
set(VELT_HOST_INCLUDE "" CACHE PATH "Folder with headers of the host that take the place of those in host/")
if(VELT_HOST_INCLUDE)
  if(NOT IS_DIRECTORY "${VELT_HOST_INCLUDE}/host")
    message(FATAL_ERROR "VELT_HOST_INCLUDE: ${VELT_HOST_INCLUDE} has no folder host/ with headers in it")
  endif()
  target_include_directories(velt_common INTERFACE "${VELT_HOST_INCLUDE}")
endif()
target_include_directories(velt_common INTERFACE "${PROJECT_SOURCE_DIR}")
target_link_libraries(velt_common INTERFACE velt_warnings velt_instrument)

include(VeltPrecompiled)  # needs velt_common

# --- the property layer -------------------------------------------------------------------------------------------
#
# Compiled once, linked twice: as the shared library that ships, and as an archive for the tests of its inner parts,
# which hidden visibility keeps out of their reach. An executable links one of the two and never both: they would
# keep two copies of the layer's state.
velt_sources_or_placeholder(veltLayerSources text errors container propdata)

add_library(velt_propdata_objects OBJECT ${veltLayerSources})
target_link_libraries(velt_propdata_objects PRIVATE velt_common)

add_library(VeltPropData SHARED $<TARGET_OBJECTS:velt_propdata_objects>)
target_link_libraries(VeltPropData PRIVATE velt_instrument)
set_target_properties(VeltPropData PROPERTIES
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}
  INSTALL_RPATH ""
  LINKER_LANGUAGE CXX)

# Every host symbol stays undefined here: the process that loads the layer supplies them. So there is no
# -Wl,--no-undefined, and no library besides the compiler's own. What the list of undefined symbols may hold is
# pinned by tests/golden/needed_symbols.txt.
set(veltLayerMap "${PROJECT_SOURCE_DIR}/cmake/VeltPropData.map")
target_link_options(VeltPropData PRIVATE "LINKER:--version-script=${veltLayerMap}")
set_property(TARGET VeltPropData APPEND PROPERTY LINK_DEPENDS "${veltLayerMap}")
target_include_directories(VeltPropData INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/velt>)
target_compile_features(VeltPropData INTERFACE cxx_std_20)

add_library(velt_propdata_internals STATIC $<TARGET_OBJECTS:velt_propdata_objects>)
set_target_properties(velt_propdata_internals PROPERTIES LINKER_LANGUAGE CXX)
target_link_libraries(velt_propdata_internals PUBLIC velt_common)

# --- drawings as documents ----------------------------------------------------------------------------------------
#
# Everything is visible, as in the embedded host: what one of them throws the other catches.
velt_sources_or_placeholder(veltDxfSources dxf)
add_library(VeltDxf SHARED ${veltDxfSources})
target_link_libraries(VeltDxf PRIVATE velt_common)
target_include_directories(VeltDxf INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/velt>)
target_compile_features(VeltDxf INTERFACE cxx_std_20)
set_target_properties(VeltDxf PROPERTIES
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}
  INSTALL_RPATH ""
  CXX_VISIBILITY_PRESET default
  VISIBILITY_INLINES_HIDDEN OFF)
# Nobody puts other functions in the place of these, so they may be inlined: a drawing is read pair by pair.
target_compile_options(VeltDxf PRIVATE -fno-semantic-interposition)

# --- the drawings that the project draws itself: for the tool, tests and benchmarks, not for who loads the host ------
velt_sources_or_placeholder(veltSampleSources samples)
add_library(velt_samples STATIC ${veltSampleSources})
target_link_libraries(velt_samples PRIVATE velt_common PUBLIC VeltDxf)

# --- the embedded host --------------------------------------------------------------------------------------------
velt_sources_or_placeholder(veltHostSources embedded)

add_library(VeltEmbeddedHost SHARED ${veltHostSources})
target_link_libraries(VeltEmbeddedHost PUBLIC VeltDxf PRIVATE velt_common ${CMAKE_DL_LIBS} Threads::Threads)
target_include_directories(VeltEmbeddedHost INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/velt>)
target_compile_features(VeltEmbeddedHost INTERFACE cxx_std_20)
# Everything is visible, and nothing is bound inside the library: a test or a tool puts a function of the same name
# into its executable, and from then on the layer and the host itself call that one. This is how faults are
# injected, so neither -Bsymbolic nor a compiler that inlines across the boundary is welcome here.
set_target_properties(VeltEmbeddedHost PROPERTIES
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}
  INSTALL_RPATH "$ORIGIN"  # finds libVeltDxf.so beside itself
  CXX_VISIBILITY_PRESET default
  VISIBILITY_INLINES_HIDDEN OFF)
target_compile_options(VeltEmbeddedHost PRIVATE -fsemantic-interposition)
if(NOT VELT_INSTRUMENTED)
  # Where nobody looks for what goes wrong in memory, the host's blocks come from a quicker heap. Only its own functions
  # are called: malloc and free stay those of the C library, which every executable names before this library.
  find_package(mimalloc REQUIRED)
  target_compile_definitions(VeltEmbeddedHost PRIVATE $<$<NOT:$<CONFIG:Debug>>:VELT_WITH_MIMALLOC>)
  target_link_libraries(VeltEmbeddedHost PRIVATE $<$<NOT:$<CONFIG:Debug>>:mimalloc>)
  # The runtime of a sanitizer is in the executable, so an instrumented library always has undefined symbols.
  target_link_options(VeltDxf PRIVATE "LINKER:--no-undefined")
  target_link_options(VeltEmbeddedHost PRIVATE "LINKER:--no-undefined")
endif()

# --- what drawings look like: for the tool and for windows, not for who loads the host ------------------------------
velt_sources_or_placeholder(veltViewSources view)
add_library(velt_view STATIC ${veltViewSources})
target_link_libraries(velt_view PRIVATE velt_common PUBLIC VeltEmbeddedHost)

# --- the palette library ------------------------------------------------------------------------------------------
#
# Like the layer, compiled once and linked twice: as the shared library that ships, and as an archive for the tests of its
# inner parts. What it needs of the host stays undefined too.
find_package(fmt REQUIRED)
velt_sources_or_placeholder(veltPaletteSources palette)

add_library(velt_palette_objects OBJECT ${veltPaletteSources})
target_link_libraries(velt_palette_objects PRIVATE velt_common ${VELT_FMT})

add_library(VeltPalette SHARED $<TARGET_OBJECTS:velt_palette_objects>)
target_link_libraries(VeltPalette PUBLIC VeltPropData PRIVATE velt_instrument ${VELT_FMT})
set_target_properties(VeltPalette PROPERTIES
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}
  INSTALL_RPATH "$ORIGIN"  # finds libVeltPropData.so beside itself
  LINKER_LANGUAGE CXX)
set(veltPaletteMap "${PROJECT_SOURCE_DIR}/cmake/VeltPalette.map")
target_link_options(VeltPalette PRIVATE "LINKER:--version-script=${veltPaletteMap}")
set_property(TARGET VeltPalette APPEND PROPERTY LINK_DEPENDS "${veltPaletteMap}")
target_compile_features(VeltPalette INTERFACE cxx_std_20)

add_library(velt_palette_internals STATIC $<TARGET_OBJECTS:velt_palette_objects>)
set_target_properties(velt_palette_internals PROPERTIES LINKER_LANGUAGE CXX)
target_link_libraries(velt_palette_internals PUBLIC velt_common ${VELT_FMT})

if(NOT VELT_INSTRUMENTED)
  # Debuggers, and the check of the binary interface, want the types of what ships.
  target_compile_options(velt_propdata_objects PRIVATE $<$<CONFIG:Debug>:-g>)
  target_compile_options(velt_palette_objects PRIVATE $<$<CONFIG:Debug>:-g>)
endif()

velt_precompiled(velt_hidden_headers velt_propdata_objects velt_palette_objects velt_samples velt_view)
velt_precompiled(velt_visible_headers VeltDxf VeltEmbeddedHost)
velt_in_pieces(velt_propdata_objects velt_palette_objects velt_samples velt_view VeltDxf)
velt_folders_in_pieces(VeltEmbeddedHost ${veltHostSources})
