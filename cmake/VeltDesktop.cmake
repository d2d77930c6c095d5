# The palette in a window: Qt's Widgets, where they are. Nothing that ships without it needs it.
option(VELT_DESKTOP "Build the palette in a window, where Qt 6 is installed" ON)
if(NOT VELT_DESKTOP)
  return()
endif()
find_package(Qt6 6.4 QUIET COMPONENTS Widgets Test)
if(NOT Qt6_FOUND)
  message(STATUS "The palette in a window is left out: Qt 6 is missing (scripts/install-dependencies desktop)")
  return()
endif()

# An archive, so that tests reach it; Main.cpp alone belongs to the executable.
velt_sources(veltDesktopSources desktop)
set(veltDesktopMain "${PROJECT_SOURCE_DIR}/desktop/Main.cpp")
list(REMOVE_ITEM veltDesktopSources "${veltDesktopMain}")
file(GLOB_RECURSE veltDesktopHeaders CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/desktop/*.h")
add_library(velt_desktop STATIC ${veltDesktopSources} ${veltDesktopHeaders})
# Qt's headers are read as those of the system, and what moc writes is not ours to warn of.
set_target_properties(velt_desktop PROPERTIES AUTOMOC ON)
target_link_libraries(velt_desktop PRIVATE velt_common PUBLIC velt_tool velt_view Qt6::Widgets)
target_compile_definitions(velt_desktop PUBLIC QT_NO_KEYWORDS)

add_executable(veltpalette "${veltDesktopMain}")
target_link_libraries(veltpalette PRIVATE velt_common velt_desktop)
