# bench/ is one program, so that the floor and the layer are measured in one run; bench/README.md says how it measures.
# bench/counting/ is a second one over the same parts, in which the calls to the host are counted: counting takes time,
# so nothing is timed there.
velt_sources(veltBenchSources bench)
set(veltBenchMain "${PROJECT_SOURCE_DIR}/bench/Main.cpp")
set(veltCountingSources ${veltBenchSources})
list(FILTER veltCountingSources INCLUDE REGEX "/bench/counting/")
set(veltBaselineSources ${veltBenchSources})
list(FILTER veltBaselineSources INCLUDE REGEX "/bench/qt/")
set(veltWindowSources ${veltBenchSources})
list(FILTER veltWindowSources INCLUDE REGEX "/bench/desktop/")
set(veltInstructionSources ${veltBenchSources})
list(FILTER veltInstructionSources INCLUDE REGEX "/bench/instructions/")
list(REMOVE_ITEM veltBenchSources
  "${veltBenchMain}" ${veltCountingSources} ${veltBaselineSources} ${veltWindowSources} ${veltInstructionSources})

add_library(velt_bench_parts STATIC ${veltBenchSources})
target_link_libraries(velt_bench_parts
  PRIVATE velt_common
  PUBLIC VeltPalette VeltPropData VeltEmbeddedHost velt_samples nlohmann_json::nlohmann_json fmt::fmt)
velt_precompiled(velt_hidden_headers velt_bench_parts)
velt_in_pieces(velt_bench_parts)

add_executable(velt_bench "${veltBenchMain}")
target_link_libraries(velt_bench PRIVATE velt_common velt_bench_parts)

# The baseline is there wherever QtCore is, and nothing else needs it.
option(VELT_BENCH_QT "Build the baseline on QtCore into the benchmarks, where QtCore 6 is there" ON)
if(VELT_BENCH_QT)
  find_package(Qt6 QUIET COMPONENTS Core)
endif()
if(TARGET Qt6::Core)
  add_library(velt_bench_baseline STATIC ${veltBaselineSources} "${PROJECT_SOURCE_DIR}/bench/qt/LineObject.h")
  set_target_properties(velt_bench_baseline PROPERTIES AUTOMOC ON)
  target_link_libraries(velt_bench_baseline PRIVATE velt_common PUBLIC velt_bench_parts Qt6::Core)
  target_link_libraries(velt_bench PRIVATE velt_bench_baseline)
  target_compile_definitions(velt_bench PRIVATE VELT_HAS_QT)
endif()

# So is the window, wherever that is built.
if(TARGET velt_desktop)
  add_library(velt_bench_window STATIC ${veltWindowSources})
  target_link_libraries(velt_bench_window PRIVATE velt_common PUBLIC velt_bench_parts velt_desktop)
  target_link_libraries(velt_bench PRIVATE velt_bench_window)
  target_compile_definitions(velt_bench PRIVATE VELT_HAS_WINDOW)
endif()

add_executable(velt_bench_counts ${veltCountingSources})
target_link_libraries(velt_bench_counts PRIVATE velt_common velt_bench_parts ${CMAKE_DL_LIBS})
# Its functions are visible, so that those that bear the name of a host function take its place everywhere.
set_target_properties(velt_bench_counts PROPERTIES
  ENABLE_EXPORTS ON
  CXX_VISIBILITY_PRESET default
  VISIBILITY_INLINES_HIDDEN OFF)

# tests/house/InstructionCountsTest.py counts its instructions.
add_executable(velt_bench_instructions ${veltInstructionSources})
target_link_libraries(velt_bench_instructions PRIVATE velt_common velt_bench_parts)

# The benchmark goes on running, and the floor stays honest. Neither looks at a time.
if(TARGET velt_test_support)
  add_test(NAME bench.quick COMMAND velt_bench --quick --allow-debug)
  add_test(NAME bench.counts COMMAND velt_bench_counts)
  set_tests_properties(bench.quick bench.counts PROPERTIES TIMEOUT 300)
endif()
