# Installation and packages: programs, data, manual pages and completions (component runtime), the
# library for others (component dev).

set(TYR_DATA_FOLDER etc CACHE STRING "Folder of the data, below the installation prefix")
# a prefix that was given as relative counts from where cmake was called
get_filename_component(CMAKE_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}" ABSOLUTE
  BASE_DIR "${CMAKE_BINARY_DIR}")
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME runtime)

install(TARGETS profiler ${COMPANIONS} DESTINATION bin)
install(DIRECTORY data/ DESTINATION ${TYR_DATA_FOLDER} PATTERN tyr.cfg EXCLUDE)
# the resource file names the folder that it is installed with
install(CODE "
  set(folder \"\${CMAKE_INSTALL_PREFIX}/${TYR_DATA_FOLDER}\")
  get_filename_component(folder \"\${folder}\" ABSOLUTE)
  get_filename_component(prefix \"\${CMAKE_INSTALL_PREFIX}\" ABSOLUTE)
  file(READ \"${CMAKE_SOURCE_DIR}/data/tyr.cfg\" text)
  if(folder MATCHES \"[ \t]\")
    string(REPLACE \"file_path: /usr/local/tyr/etc\" \"file_path: \\\"\${folder}\\\"\"
      text \"\${text}\")
  endif()
  string(REPLACE /usr/local/tyr/etc \"\${folder}\" text \"\${text}\")
  string(REPLACE /usr/local/tyr \"\${prefix}\" text \"\${text}\")
  set(made \"\$ENV{DESTDIR}\${folder}/tyr.cfg\")
  file(WRITE \"\${made}\" \"\${text}\")
  list(APPEND CMAKE_INSTALL_MANIFEST_FILES \"\${folder}/tyr.cfg\")")
install(FILES LICENSE CHANGELOG.md DESTINATION share/doc/tyr)
if(EXISTS ${CMAKE_SOURCE_DIR}/docs/man)
  install(DIRECTORY docs/man/ DESTINATION share/man)
endif()
if(EXISTS ${CMAKE_SOURCE_DIR}/docs/manual)
  install(DIRECTORY docs/manual/ DESTINATION share/doc/tyr/manual)
endif()
install(DIRECTORY completions/bash/ DESTINATION share/bash-completion/completions)
install(DIRECTORY completions/zsh/ DESTINATION share/zsh/vendor-completions)
install(DIRECTORY completions/fish/ DESTINATION share/fish/vendor_completions.d)

# The library: headers, archive, pkg-config file, CMake package. What it is linked with stands in the
# package's own files, since a path of this machine isn't one of the next.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME dev)
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
install(TARGETS tyr EXPORT tyrTargets ARCHIVE DESTINATION lib INCLUDES DESTINATION include)
install(EXPORT tyrTargets NAMESPACE tyr:: DESTINATION lib/cmake/tyr)
configure_package_config_file(cmake/tyrConfig.cmake.in ${CMAKE_BINARY_DIR}/tyrConfig.cmake
  INSTALL_DESTINATION lib/cmake/tyr)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/tyrConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/tyrConfig.cmake ${CMAKE_BINARY_DIR}/tyrConfigVersion.cmake
  DESTINATION lib/cmake/tyr)
configure_file(cmake/tyr.pc.in ${CMAKE_BINARY_DIR}/tyr.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/tyr.pc DESTINATION lib/pkgconfig)
install(DIRECTORY tyr DESTINATION include FILES_MATCHING PATTERN "*.h" PATTERN "*_private.h" EXCLUDE)

configure_file(cmake/uninstall.cmake.in ${CMAKE_BINARY_DIR}/uninstall.cmake @ONLY)
add_custom_target(uninstall COMMAND ${CMAKE_COMMAND} -P ${CMAKE_BINARY_DIR}/uninstall.cmake)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tyr)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The profiler developers <profiler@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Plots of wind-profiler observations, grids and soundings")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime dev)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME tyr)
# loaded when a file needs it, which the links of the programs don't tell
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libnetcdf19 | libnetcdf22 | libnetcdf18, libcairo2")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "libeccodes0")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS "ghostscript, man-db, bash-completion")
set(CPACK_DEBIAN_DEV_PACKAGE_NAME tyr-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
  "tyr (= ${PROJECT_VERSION}), libnetcdf-dev, libx11-dev, libpng-dev, zlib1g-dev, libopenjp2-7-dev, libcairo2-dev")
include(CPack)
