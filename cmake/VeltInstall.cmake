include(CMakePackageConfigHelpers)

# What is installed is parted like the packages: the layer, what is needed to build on it, and everything to look at it with.
set(veltLibrary LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" NAMELINK_COMPONENT development)
install(TARGETS VeltPropData EXPORT VeltPropDataTargets ${veltLibrary} COMPONENT library)
install(TARGETS VeltPalette VeltDxf VeltEmbeddedHost VeltHostCheck EXPORT VeltPropDataTargets ${veltLibrary} COMPONENT tools)
install(TARGETS VeltRecorder ${veltLibrary} COMPONENT tools)

# --- tools ----------------------------------------------------------------------------------------------------------
install(TARGETS veltprops velt-host-check velt-replay RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT tools)
install(TARGETS VeltEmbeddedHostModule LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}/velt/hosts" COMPONENT tools)
if(VELT_PLUGIN_TARGETS)
  install(TARGETS ${VELT_PLUGIN_TARGETS} LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}/velt/plugins" COMPONENT tools)
endif()

install(DIRECTORY "${VELT_MAN_DIR}/" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tools FILES_MATCHING PATTERN "*.1")
install(FILES packaging/velt-host-check.1 packaging/velt-replay.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tools)
install(FILES tool/completion/veltprops.bash RENAME veltprops COMPONENT tools
  DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
install(FILES tool/completion/_veltprops DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions" COMPONENT tools)
install(FILES tool/completion/veltprops.fish DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d" COMPONENT tools)

# --- the window, where it is built ----------------------------------------------------------------------------------
if(TARGET veltpalette)
  install(TARGETS veltpalette RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT desktop)
  install(FILES packaging/veltpalette.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT desktop)
  install(FILES packaging/veltpalette.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications" COMPONENT desktop)
  install(FILES packaging/veltpalette.svg DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps"
    COMPONENT desktop)
endif()

set(veltDocs "${CMAKE_INSTALL_DATADIR}/doc/veltpropdata")
install(FILES README.md CHANGELOG.md COPYING DESTINATION "${veltDocs}" COMPONENT tools)
install(FILES host/README.md DESTINATION "${veltDocs}/host" COMPONENT tools)
install(DIRECTORY docs examples plugins DESTINATION "${veltDocs}" COMPONENT tools
  PATTERN ".clang-format" EXCLUDE PATTERN Doxyfile EXCLUDE)
# Every symbol that a host has to supply; a test holds the list against the library.
install(FILES tests/golden/needed_symbols.txt DESTINATION "${veltDocs}" RENAME needed-symbols.txt COMPONENT tools)

# --- public headers -------------------------------------------------------------------------------------------------
#
# Includes are written from the root of the tree, so the installed headers keep its folders below one of their own.
set(veltHeaders "${CMAKE_INSTALL_INCLUDEDIR}/velt")
# Whole folders: what a host declares, the holders, drawings as documents; and the parts of the layer's records.
foreach(folder IN ITEMS host holders dxf text container)
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/${folder}" DESTINATION "${veltHeaders}" COMPONENT development
    FILES_MATCHING PATTERN "*.h" PATTERN "*.inc")
endforeach()
# Of everything else the headers on top alone: its rooms are its own.
set(VELT_PUBLIC_HEADERS
  propdata/VeltPropData.h propdata/Version.h
  errors/CrashReport.h errors/LoadErrString.h
  palette/Export.h palette/Palette.h
  hostcheck/HostCheck.h hostcheck/HostModule.h
  embedded/database/Changes.h embedded/database/Drawing.h embedded/database/Table.h
  embedded/platform/Watch.h
  embedded/sources/LoadedPlugins.h embedded/sources/Plugin.h embedded/sources/PluginProperty.h
  embedded/sources/PluginReports.h)
foreach(header IN LISTS VELT_PUBLIC_HEADERS)
  get_filename_component(folder "${header}" DIRECTORY)
  install(FILES "${header}" DESTINATION "${veltHeaders}/${folder}" COMPONENT development)
endforeach()

# --- for programs that build on it ----------------------------------------------------------------------------------
install(EXPORT VeltPropDataTargets NAMESPACE Velt:: COMPONENT development
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/VeltPropData")
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/VeltPropDataConfig.cmake.in"
  "${CMAKE_BINARY_DIR}/generated/VeltPropDataConfig.cmake"
  INSTALL_DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/VeltPropData")
write_basic_package_version_file("${CMAKE_BINARY_DIR}/generated/VeltPropDataConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${CMAKE_BINARY_DIR}/generated/VeltPropDataConfig.cmake"
  "${CMAKE_BINARY_DIR}/generated/VeltPropDataConfigVersion.cmake"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/VeltPropData" COMPONENT development)

file(RELATIVE_PATH veltPrefixFromPc "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
foreach(package IN ITEMS veltpropdata veltpalette veltembeddedhost)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/${package}.pc.in" "${CMAKE_BINARY_DIR}/generated/${package}.pc" @ONLY)
  install(FILES "${CMAKE_BINARY_DIR}/generated/${package}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
    COMPONENT development)
endforeach()
