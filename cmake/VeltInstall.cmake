include(CMakePackageConfigHelpers)

install(TARGETS VeltPropData VeltPalette VeltDxf VeltEmbeddedHost EXPORT VeltPropDataTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
if(TARGET veltprops)
  install(TARGETS veltprops RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  install(DIRECTORY "${VELT_MAN_DIR}/" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" FILES_MATCHING PATTERN "*.1")
  # Distributions keep a folder for what packages bring; zsh looks into this one below /usr/local.
  set(VELT_ZSH_COMPLETIONS "${CMAKE_INSTALL_DATADIR}/zsh/site-functions" CACHE STRING "Where zsh finds completions")
  install(FILES tool/completion/veltprops.bash RENAME veltprops
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
  install(FILES tool/completion/_veltprops DESTINATION "${VELT_ZSH_COMPLETIONS}")
  install(FILES tool/completion/veltprops.fish DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
endif()
if(VELT_PLUGIN_TARGETS)
  install(TARGETS ${VELT_PLUGIN_TARGETS} LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}/velt/plugins")
endif()

if(TARGET velt-host-check)
  install(TARGETS VeltHostCheck EXPORT VeltPropDataTargets LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
  install(TARGETS velt-host-check RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  install(TARGETS VeltEmbeddedHostModule LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}/velt/hosts")
  install(FILES hostcheck/HostCheck.h hostcheck/HostModule.h DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/velt/hostcheck")
endif()

install(TARGETS VeltRecorder LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
install(TARGETS velt-replay RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")

# Includes are written from the root of the tree, so the installed headers keep its folders below one of their own.
foreach(folder IN ITEMS host holders text errors container propdata dxf embedded)
  if(IS_DIRECTORY "${PROJECT_SOURCE_DIR}/${folder}")
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/${folder}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/velt"
      FILES_MATCHING PATTERN "*.h" PATTERN "*.inc" PATTERN "propdata/support" EXCLUDE)
  endif()
endforeach()

# Of the palette library the headers on top alone: its rooms are its own.
install(FILES palette/Export.h palette/Palette.h DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/velt/palette")

install(EXPORT VeltPropDataTargets NAMESPACE Velt:: DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/VeltPropData")
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/VeltPropDataConfig.cmake.in"
  "${CMAKE_BINARY_DIR}/generated/VeltPropDataConfig.cmake"
  INSTALL_DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/VeltPropData")
write_basic_package_version_file("${CMAKE_BINARY_DIR}/generated/VeltPropDataConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${CMAKE_BINARY_DIR}/generated/VeltPropDataConfig.cmake"
  "${CMAKE_BINARY_DIR}/generated/VeltPropDataConfigVersion.cmake"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/VeltPropData")

file(RELATIVE_PATH veltPrefixFromPc "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
foreach(package IN ITEMS veltpropdata veltpalette veltembeddedhost)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/${package}.pc.in" "${CMAKE_BINARY_DIR}/generated/${package}.pc" @ONLY)
  install(FILES "${CMAKE_BINARY_DIR}/generated/${package}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endforeach()

set(veltDocs "${CMAKE_INSTALL_DATADIR}/doc/veltpropdata")
install(FILES README.md CHANGELOG.md DESTINATION "${veltDocs}")
install(DIRECTORY docs examples DESTINATION "${veltDocs}" PATTERN ".clang-format" EXCLUDE PATTERN Doxyfile EXCLUDE)
# Every symbol that a host has to supply; a test holds the list against the library.
install(FILES tests/golden/needed_symbols.txt DESTINATION "${veltDocs}" RENAME needed-symbols.txt)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME veltpropdata)
set(CPACK_PACKAGE_CONTACT "the maintainers of ${PROJECT_NAME}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_BINARY_DIR}/lib")
set(CPACK_STRIP_FILES ON)
include(CPack)
