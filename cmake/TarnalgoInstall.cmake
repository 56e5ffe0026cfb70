# `cmake --install`: the library, its headers, a package for find_package(tarnalgo) and a pkg-config
# file. Every path in them is relative to the place they are read from.
include(CMakePackageConfigHelpers)

install(TARGETS tarnalgo EXPORT tarnalgoTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tarnalgo
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tarnalgo)

set(TARNALGO_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/tarnalgo)
install(EXPORT tarnalgoTargets NAMESPACE tarnalgo:: DESTINATION ${TARNALGO_PACKAGE_DIR})
configure_package_config_file(cmake/tarnalgoConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/tarnalgoConfig.cmake INSTALL_DESTINATION ${TARNALGO_PACKAGE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/tarnalgoConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/tarnalgoConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/tarnalgoConfigVersion.cmake
  ${PROJECT_SOURCE_DIR}/cmake/FindClipper6.cmake
  DESTINATION ${TARNALGO_PACKAGE_DIR})

file(RELATIVE_PATH TARNALGO_PREFIX_FROM_PC "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file(cmake/tarnalgo.pc.in ${CMAKE_CURRENT_BINARY_DIR}/tarnalgo.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/tarnalgo.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
