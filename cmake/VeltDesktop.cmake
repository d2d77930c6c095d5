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
velt_in_pieces(velt_desktop)

# --- its languages: compiled into the program, where Qt's tools for that are ---------------------------------------
find_program(VELT_LRELEASE NAMES lrelease HINTS "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS}" NO_DEFAULT_PATH)
set(veltTranslationFiles)
set(veltTranslationEntries)
if(VELT_LRELEASE)
  foreach(language IN ITEMS de en)
    set(source "${PROJECT_SOURCE_DIR}/desktop/translations/veltpalette_${language}.ts")
    set(compiled "${CMAKE_BINARY_DIR}/generated/translations/veltpalette_${language}.qm")
    add_custom_command(OUTPUT "${compiled}"
      COMMAND "${CMAKE_COMMAND}" -E make_directory "${CMAKE_BINARY_DIR}/generated/translations"
      COMMAND "${VELT_LRELEASE}" -silent "${source}" -qm "${compiled}"
      DEPENDS "${source}")
    list(APPEND veltTranslationFiles "${compiled}")
    string(APPEND veltTranslationEntries "<file>veltpalette_${language}.qm</file>")
  endforeach()
else()
  message(STATUS "The palette in a window speaks English only: lrelease is missing (scripts/install-dependencies desktop)")
endif()
set(veltTranslations "${CMAKE_BINARY_DIR}/generated/translations/translations.qrc")
file(CONFIGURE OUTPUT "${veltTranslations}"
  CONTENT "<RCC><qresource prefix=\"/translations\">${veltTranslationEntries}</qresource></RCC>\n")
qt6_add_resources(veltResourceSources "${veltTranslations}")
set_property(SOURCE ${veltResourceSources} APPEND PROPERTY OBJECT_DEPENDS "${veltTranslationFiles}")
target_sources(velt_desktop PRIVATE ${veltResourceSources} ${veltTranslationFiles})

add_executable(veltpalette "${veltDesktopMain}")
target_link_libraries(veltpalette PRIVATE velt_common velt_desktop)
add_dependencies(velt_product veltpalette)
