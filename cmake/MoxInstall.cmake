# Installs the library, the public headers under include/Mox, a CMake package
# (find_package(Mox) gives Mox::Mox) and a pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS Mox EXPORT MoxTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/Mox)
install(TARGETS mox RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/Mox
  FILES_MATCHING PATTERN "*.h" PATTERN "*.def" PATTERN "*.inc")

install(EXPORT MoxTargets NAMESPACE Mox:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Mox)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/MoxConfig.cmake.in
  ${PROJECT_BINARY_DIR}/MoxConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Mox)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/MoxConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/MoxConfig.cmake ${PROJECT_BINARY_DIR}/MoxConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Mox)

configure_file(${PROJECT_SOURCE_DIR}/cmake/mox.pc.in ${PROJECT_BINARY_DIR}/mox.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/mox.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
