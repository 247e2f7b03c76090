# What find_package(Utility) and pkg-config read from an installation. Both find their files relative to their own place,
# so that an installation may be moved.
include(CMakePackageConfigHelpers)

set(UTILITY_CODEMAPS_PATH ${CMAKE_INSTALL_DATADIR}/utility/codemaps.dat)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Utility)
configure_package_config_file(
  ${CMAKE_CURRENT_LIST_DIR}/UtilityConfig.cmake.in ${PROJECT_BINARY_DIR}/UtilityConfig.cmake
  INSTALL_DESTINATION ${package_dir}
  PATH_VARS UTILITY_CODEMAPS_PATH)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/UtilityConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/UtilityConfig.cmake ${PROJECT_BINARY_DIR}/UtilityConfigVersion.cmake
  DESTINATION ${package_dir} COMPONENT development)
install(EXPORT UtilityTargets NAMESPACE Utility:: DESTINATION ${package_dir} COMPONENT development)

if(NOT BUILD_SHARED_LIBS)
  set(UTILITY_PC_DEFINES " -DUTILITY_STATIC")
  set(UTILITY_PC_THREADS " -pthread")
endif()
file(RELATIVE_PATH UTILITY_PC_PREFIX
  ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(${CMAKE_CURRENT_LIST_DIR}/utility.pc.in ${PROJECT_BINARY_DIR}/utility.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/utility.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT development)
