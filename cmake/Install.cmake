# SPDX-License-Identifier: MIT
# The installed package: library, headers, CMake package, pkg-config file. It may be moved after installation.

include(CMakePackageConfigHelpers)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/QuollFoundation)

install(TARGETS QuollFoundation EXPORT QuollFoundationTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT QuollFoundationTargets NAMESPACE QuollFoundation:: DESTINATION ${package_folder})

configure_package_config_file(packaging/QuollFoundationConfig.cmake.in QuollFoundationConfig.cmake
  INSTALL_DESTINATION ${package_folder} NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(QuollFoundationConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/QuollFoundationConfig.cmake
              ${PROJECT_BINARY_DIR}/QuollFoundationConfigVersion.cmake
              ${PROJECT_SOURCE_DIR}/packaging/QuollModules.cmake
  DESTINATION ${package_folder})

# The .pc file finds its prefix by its own place.
file(RELATIVE_PATH QUOLL_PC_TO_PREFIX
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(packaging/QuollFoundation.pc.in QuollFoundation.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/QuollFoundation.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
