# Debian packages, one for each component of VeltInstall.cmake:
#   libveltpropdata0       the layer, for CAD programs
#   libveltpropdata-dev    what is needed to build on it
#   veltprops              tools, palette library, embedded host, samples, guides
#   veltpalette            the palette in a window, where it is built
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME veltpropdata)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
# The default, so that it does not stand before the descriptions of the packages, which have a first line of their own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_NAME} built using CMake")
set(CPACK_PACKAGE_CONTACT "Maintainers of VeltPropData <maintainers@veltpropdata.example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL library development tools)
if(TARGET veltpalette)
  list(APPEND CPACK_COMPONENTS_ALL desktop)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_BINARY_DIR}/lib")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME "libveltpropdata${PROJECT_VERSION_MAJOR}")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/triggers")
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "property layer of a CAD palette
The data layer that the property palette of a CAD program calls: it merges
the properties of the selected entities into one list, says how each one is
edited, and writes a changed value back. The program that loads it supplies
what it calls.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libveltpropdata-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "libveltpropdata${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION}), veltprops (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "property layer of a CAD palette - development files
The public headers of the property layer, of the palette library and of the
embedded host, with their CMake package and pkg-config files.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME veltprops)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_TOOLS_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/triggers")
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "libveltpropdata${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "properties of the entities of DXF drawings on the command line
Shows, compares and changes properties of entities in DXF drawings as the
property palette of a CAD program does, without one: the program veltprops,
an embedded host with a drawing database, sample plug-ins, a check for hosts,
and the guides for authors of plug-ins, palettes and hosts.")

set(CPACK_DEBIAN_DESKTOP_PACKAGE_NAME veltpalette)
set(CPACK_DEBIAN_DESKTOP_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_DESKTOP_PACKAGE_DEPENDS "veltprops (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DESKTOP_PACKAGE_RECOMMENDS "qt6-translations-l10n")
set(CPACK_COMPONENT_DESKTOP_DESCRIPTION "drawing and property palette in a window
Shows DXF drawings, and beside the drawing the palette of the entities that
are selected, to read and to edit as in a CAD program: the program
veltpalette.")

# What each package has besides its component: the notice of copyright, and the list of changes.
execute_process(COMMAND env LC_ALL=C date -R -u -d "${VELT_RELEASE_DATE}" OUTPUT_VARIABLE VELT_RELEASE_DATE_LONG
  OUTPUT_STRIP_TRAILING_WHITESPACE)
configure_file("${PROJECT_SOURCE_DIR}/packaging/changelog.in" "${CMAKE_BINARY_DIR}/generated/changelog" @ONLY)
set(veltComponents ${CPACK_COMPONENTS_ALL})
list(TRANSFORM veltComponents TOUPPER)
foreach(component IN LISTS veltComponents)
  string(TOLOWER "${component}" name)
  set(folder "${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${component}_PACKAGE_NAME}")
  install(FILES COPYING RENAME copyright DESTINATION "${folder}" COMPONENT ${name} EXCLUDE_FROM_ALL)
  install(FILES "${CMAKE_BINARY_DIR}/generated/changelog" DESTINATION "${folder}" COMPONENT ${name} EXCLUDE_FROM_ALL)
endforeach()
install(FILES packaging/libveltpropdata0.lintian-overrides RENAME libveltpropdata0
  DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides" COMPONENT library EXCLUDE_FROM_ALL)
install(FILES packaging/veltprops.lintian-overrides RENAME veltprops
  DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides" COMPONENT tools EXCLUDE_FROM_ALL)

# Compresses manual pages and changelogs, and takes out where a program looks for its libraries: in /usr they are found.
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/BeforePacking.cmake")
include(CPack)
