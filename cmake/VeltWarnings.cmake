# The warnings that every target of the project is compiled with, as errors unless VELT_WERROR is off.
#
# Not in the list, on purpose:
#   -Wnon-virtual-dtor, -Wdelete-non-virtual-dtor   The interfaces are plain vtables: pure virtual methods and no
#       virtual destructor, because the destructor would take slots of the vtable that belong to methods. Objects
#       end their life through Release(), never through a delete of an interface pointer. The second one is part
#       of -Wall and stays on, since it speaks only where such a delete is written; classes that end themselves
#       in Release() are final, which is what keeps it quiet.
#   -Wold-style-cast   Would fire inside macros of the test and benchmark frameworks.
option(VELT_WERROR "Treat warnings as errors" ON)

add_library(velt_warnings INTERFACE)
target_compile_options(velt_warnings INTERFACE
  -Wall -Wextra -Wpedantic
  -Wshadow
  -Wconversion -Wsign-conversion
  -Wcast-align -Wcast-qual
  -Wundef
  -Wformat=2
  -Wimplicit-fallthrough
  -Woverloaded-virtual
  -Wunused
  $<$<BOOL:${VELT_WERROR}>:-Werror>)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(velt_warnings INTERFACE
    -Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wextra-semi)
  if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # g++ 12 reports overlapping copies inside std::string's own operator+ when it optimises; later ones do not.
    # It also sees the destructor of a moved-from string in an optional variant free what was never allocated.
    target_compile_options(velt_warnings INTERFACE -Wno-restrict -Wno-free-nonheap-object)
  endif()
elseif(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # Of files that are compiled in one piece, a name in a function of one may hide what another keeps to itself.
  target_compile_options(velt_warnings INTERFACE
    -Wextra-semi $<$<BOOL:$<TARGET_PROPERTY:UNITY_BUILD>>:-Wno-shadow>)
endif()
