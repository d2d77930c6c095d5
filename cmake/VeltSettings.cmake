set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Debug CACHE STRING "Kind of build" FORCE)
endif()

# Nothing leaves a library unless it is marked; the embedded host is the exception and says so itself.
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")

# A program finds its libraries from where it stands, in the build folder as in an installation, so either can be
# moved as a whole. A library finds what it needs beside itself; the layer needs nothing, because all that it calls is there
# already when it is loaded.
include(GNUInstallDirs)
file(RELATIVE_PATH veltLibFromBin "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
set(VELT_PROGRAM_RPATH "$ORIGIN/../lib" "$ORIGIN/${veltLibFromBin}")
list(REMOVE_DUPLICATES VELT_PROGRAM_RPATH)
set(CMAKE_INSTALL_RPATH "${VELT_PROGRAM_RPATH}")
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)

# Installing and packing take what was built; they do not build tests and benchmarks first.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

if(NOT CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(VELT_CCACHE ccache)
  mark_as_advanced(VELT_CCACHE)
  if(VELT_CCACHE)
    # What a unit sees of a precompiled header is its content, not its time; and paths below the tree are kept relative,
    # so that a second checkout compiles nothing that the first one has compiled.
    set(CMAKE_CXX_COMPILER_LAUNCHER env
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=1 "${VELT_CCACHE}")
  endif()
endif()

# The interpreter of the distribution comes first, because the Python packages of the distribution serve
# only that one.
find_program(VELT_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH)
find_program(VELT_PYTHON python3)
mark_as_advanced(VELT_PYTHON)

find_package(Threads REQUIRED)
