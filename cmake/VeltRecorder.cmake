# --- record and replay --------------------------------------------------------------------------------------------
#
# The same functions stand in front of the host's twice: in a library that hands on and writes down, and in a program that
# answers from what was written. Both define names of the host, so these are visible.
velt_sources(veltRecorderSources recorder)
list(FILTER veltRecorderSources EXCLUDE REGEX "/recorder/(library|replay)/")

add_library(velt_recorder STATIC ${veltRecorderSources})
target_link_libraries(velt_recorder PRIVATE velt_common PUBLIC nlohmann_json::nlohmann_json ${CMAKE_DL_LIBS})

add_library(VeltRecorder SHARED recorder/library/Recording.cpp recorder/library/Redirection.cpp $<TARGET_OBJECTS:velt_recorder>)
target_link_libraries(VeltRecorder PRIVATE velt_common nlohmann_json::nlohmann_json ${CMAKE_DL_LIBS})
set(veltRecorderMap "${PROJECT_SOURCE_DIR}/cmake/VeltRecorder.map")
# Calls of its own go to its own functions' names like everybody's, except that nothing may bind to a copy of the layer's.
target_link_options(VeltRecorder PRIVATE "LINKER:--version-script=${veltRecorderMap}")
set_property(TARGET VeltRecorder APPEND PROPERTY LINK_DEPENDS "${veltRecorderMap}")
set_target_properties(VeltRecorder PROPERTIES INSTALL_RPATH "")

# The strings, values and arrays of a replay are those of the embedded host; everything else comes from the recording.
add_library(velt_replay STATIC recorder/replay/Replay.cpp recorder/replay/TextReplacement.cpp)
target_link_libraries(velt_replay PRIVATE velt_common PUBLIC velt_recorder VeltPropData VeltEmbeddedHost)

add_executable(velt-replay recorder/replay/Main.cpp $<TARGET_OBJECTS:velt_recorder>)
target_link_libraries(velt-replay PRIVATE velt_common velt_replay CLI11::CLI11)
set_target_properties(velt-replay PROPERTIES ENABLE_EXPORTS ON)

set_target_properties(velt_recorder VeltRecorder velt_replay velt-replay PROPERTIES
  CXX_VISIBILITY_PRESET default
  VISIBILITY_INLINES_HIDDEN OFF)
foreach(target IN ITEMS VeltRecorder velt-replay)
  target_compile_definitions(${target} PRIVATE "VELT_VERSION=\"${PROJECT_VERSION}\"")
endforeach()
velt_precompiled(velt_visible_headers velt_recorder VeltRecorder velt_replay)
velt_in_pieces(velt_recorder)
add_dependencies(velt_product VeltRecorder velt-replay)
