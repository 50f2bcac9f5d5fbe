# Installs the library, its headers, the CMake package, the pkg-config file, the
# licence and the host program with its manual page and completions. Folders that CMAKE_INSTALL_* names are relative
# to the prefix.

include(CMakePackageConfigHelpers)

set(PELGRIN_CMAKE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/PelgrinDLL")
set(PELGRIN_HEADER_DIR "${CMAKE_INSTALL_INCLUDEDIR}/PelgrinDLL")

install(TARGETS PelgrinDLL EXPORT PelgrinDLLTargets)
install(EXPORT PelgrinDLLTargets NAMESPACE PelgrinDLL:: DESTINATION "${PELGRIN_CMAKE_DIR}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/" DESTINATION "${PELGRIN_HEADER_DIR}"
  FILES_MATCHING PATTERN "*.h")
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" DESTINATION "${CMAKE_INSTALL_DOCDIR}")
if(PELGRIN_APPS)
  install(TARGETS pelgrin)
  set(PELGRIN_HELP_DIR "${PROJECT_BINARY_DIR}/apps/pelgrin/help")
  install(FILES "${PELGRIN_HELP_DIR}/pelgrin.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
  install(FILES "${PELGRIN_HELP_DIR}/pelgrin"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
  install(FILES "${PELGRIN_HELP_DIR}/_pelgrin"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions")
  install(FILES "${PELGRIN_HELP_DIR}/pelgrin.fish"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
endif()

configure_package_config_file(cmake/PelgrinDLLConfig.cmake.in PelgrinDLLConfig.cmake
  INSTALL_DESTINATION "${PELGRIN_CMAKE_DIR}")
write_basic_package_version_file(PelgrinDLLConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/PelgrinDLLConfig.cmake"
  "${PROJECT_BINARY_DIR}/PelgrinDLLConfigVersion.cmake"
  "${PROJECT_SOURCE_DIR}/cmake/FindOpenMSCore.cmake"
  DESTINATION "${PELGRIN_CMAKE_DIR}")

# pkg-config has no module that could find OpenMS: its places are written down,
# and the forwarding folder for its generated headers is installed.
set(PELGRIN_PC_OPENMS_CFLAGS "-I${OpenMSCore_INCLUDE_DIR} -I${OpenMSCore_BOOST_INCLUDE_DIR}")
if(OpenMSCore_FORWARDING_DIR)
  install(DIRECTORY "${OpenMSCore_FORWARDING_DIR}/" DESTINATION "${PELGRIN_HEADER_DIR}/openms-core")
  string(PREPEND PELGRIN_PC_OPENMS_CFLAGS "-I\${includedir}/PelgrinDLL/openms-core ")
endif()
get_filename_component(PELGRIN_OPENMS_LIBRARY_DIR "${OpenMSCore_LIBRARY}" DIRECTORY)
set(PELGRIN_PC_OPENMS_LIBS "-L${PELGRIN_OPENMS_LIBRARY_DIR} -lOpenMS")
file(RELATIVE_PATH PELGRIN_PC_PREFIX
  "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
configure_file(cmake/PelgrinDLL.pc.in PelgrinDLL.pc @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/PelgrinDLL.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
