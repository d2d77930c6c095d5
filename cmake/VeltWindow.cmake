# The palette in a window: Qt's Widgets, where they are. Nothing that ships without it needs it.
option(VELT_WINDOW "Build the palette in a window, where Qt 6 is installed" ON)
if(NOT VELT_WINDOW)
  return()
endif()
find_package(Qt6 6.4 QUIET COMPONENTS Widgets Test)
if(NOT Qt6_FOUND)
  message(STATUS "The palette in a window is left out: Qt 6 is missing (scripts/install-dependencies window)")
  return()
endif()

# An archive, so that tests reach it; Main.cpp alone belongs to the executable.
velt_sources(veltWindowSources window)
set(veltWindowMain "${PROJECT_SOURCE_DIR}/window/Main.cpp")
list(REMOVE_ITEM veltWindowSources "${veltWindowMain}")
file(GLOB_RECURSE veltWindowHeaders CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/window/*.h")
add_library(velt_window STATIC ${veltWindowSources} ${veltWindowHeaders})
# Qt's headers are read as those of the system, and what moc writes is not ours to warn of.
set_target_properties(velt_window PROPERTIES AUTOMOC ON)
target_link_libraries(velt_window PRIVATE velt_common PUBLIC velt_tool velt_view Qt6::Widgets)
target_compile_definitions(velt_window PUBLIC QT_NO_KEYWORDS)

add_executable(veltpalette "${veltWindowMain}")
target_link_libraries(veltpalette PRIVATE velt_common velt_window)
