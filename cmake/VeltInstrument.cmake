# Instrumented builds. Every target links velt_instrument, so one switch instruments the whole process: a layer that
# is instrumented inside a process that is not would miss half of what goes wrong between the two.
set(VELT_SANITIZE "" CACHE STRING "Sanitizers, as in -fsanitize=: 'address,undefined' or 'thread'; empty for none")
option(VELT_COVERAGE "Instrument for line and branch coverage" OFF)
option(VELT_FUZZ "Link the fuzz targets with libFuzzer (needs clang)" OFF)

add_library(velt_instrument INTERFACE)
set(VELT_INSTRUMENTED OFF)

if(VELT_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "VELT_FUZZ needs clang: libFuzzer is part of its runtime")
  endif()
  target_compile_options(velt_instrument INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(velt_instrument INTERFACE -fsanitize=fuzzer-no-link)
  set(VELT_INSTRUMENTED ON)
endif()

if(VELT_SANITIZE)
  set(veltSanitizerFlags -fsanitize=${VELT_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(velt_instrument INTERFACE ${veltSanitizerFlags})
  target_link_options(velt_instrument INTERFACE ${veltSanitizerFlags})
  set(VELT_INSTRUMENTED ON)
endif()

# The other standard library. Debian's libraries are made with libstdc++, so of those that share types of the standard
# library with their users only headers and sources are taken.
option(VELT_LIBCXX "Build on libc++ in place of libstdc++ (needs clang)" OFF)
set(VELT_FMT fmt::fmt)
if(VELT_LIBCXX)
  add_compile_options(-stdlib=libc++)
  add_link_options(-stdlib=libc++)
  set(VELT_FMT fmt::fmt-header-only)
endif()

if(VELT_COVERAGE)
  target_compile_options(velt_instrument INTERFACE --coverage)
  target_link_options(velt_instrument INTERFACE --coverage)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(velt_instrument INTERFACE -fprofile-update=atomic)
  endif()
  set(VELT_INSTRUMENTED ON)
endif()

# Checked containers and iterators wherever speed is not what is measured; the layout of the containers stays.
add_compile_definitions($<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)
