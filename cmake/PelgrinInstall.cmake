# Installs the library, its headers, the CMake package, the pkg-config file and
# the host program.

include(CMakePackageConfigHelpers)

set(PELGRIN_CMAKE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/PelgrinDLL")
set(PELGRIN_HEADER_DIR "${CMAKE_INSTALL_INCLUDEDIR}/PelgrinDLL")

install(TARGETS PelgrinDLL EXPORT PelgrinDLLTargets)
install(EXPORT PelgrinDLLTargets NAMESPACE PelgrinDLL:: DESTINATION "${PELGRIN_CMAKE_DIR}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/" DESTINATION "${PELGRIN_HEADER_DIR}"
  FILES_MATCHING PATTERN "*.h")
if(PELGRIN_APPS)
  install(TARGETS pelgrin)
endif()

configure_package_config_file(cmake/PelgrinDLLConfig.cmake.in PelgrinDLLConfig.cmake
  INSTALL_DESTINATION "${PELGRIN_CMAKE_DIR}")
write_basic_package_version_file(PelgrinDLLConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/PelgrinDLLConfig.cmake"
  "${PROJECT_BINARY_DIR}/PelgrinDLLConfigVersion.cmake"
  "${PROJECT_SOURCE_DIR}/cmake/FindOpenMSCore.cmake"
  DESTINATION "${PELGRIN_CMAKE_DIR}")

# pkg-config has no module that could find the generated headers of OpenMS: the
# forwarding folder is installed for it.
set(PELGRIN_PC_OPENMS_CFLAGS "")
if(OpenMSCore_FORWARDING_DIR)
  install(DIRECTORY "${OpenMSCore_FORWARDING_DIR}/" DESTINATION "${PELGRIN_HEADER_DIR}/openms-core")
  set(PELGRIN_PC_OPENMS_CFLAGS " -I\${includedir}/PelgrinDLL/openms-core")
endif()
configure_file(cmake/PelgrinDLL.pc.in PelgrinDLL.pc @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/PelgrinDLL.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
