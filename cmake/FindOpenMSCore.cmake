# Finds the core library of OpenMS, headers and libOpenMS only, without Qt.
#
# Debian installs the generated headers (config.h and others) below
# OpenMS/build/<dir>/<dir>/obj-*/src/openms/, where no include path reaches
# them. This module makes a folder of forwarding headers for them in the build
# tree. An OpenMS that has its headers in one place is taken as it is.
#
# Result: the target OpenMSCore::OpenMSCore, and the variables
#   OpenMSCore_FOUND, OpenMSCore_VERSION, OpenMSCore_LIBRARY
#   OpenMSCore_FORWARDING_DIR  the forwarding folder, empty where none is needed

find_path(OpenMSCore_INCLUDE_DIR OpenMS/DATASTRUCTURES/String.h)
find_library(OpenMSCore_LIBRARY OpenMS)
find_path(OpenMSCore_BOOST_INCLUDE_DIR boost/current_function.hpp)

set(OpenMSCore_FORWARDING_DIR "")
set(OpenMSCore_GENERATED_DIR "")
if(OpenMSCore_INCLUDE_DIR)
  if(EXISTS "${OpenMSCore_INCLUDE_DIR}/OpenMS/OpenMSConfig.h")
    set(OpenMSCore_GENERATED_DIR "${OpenMSCore_INCLUDE_DIR}/OpenMS")
  else()
    file(GLOB _openmscore_configs
      "${OpenMSCore_INCLUDE_DIR}/OpenMS/build/*/*/obj-*/src/openms/OpenMSConfig.h")
    if(_openmscore_configs)
      list(GET _openmscore_configs 0 _openmscore_config)
      get_filename_component(OpenMSCore_GENERATED_DIR "${_openmscore_config}" DIRECTORY)
      set(OpenMSCore_FORWARDING_DIR "${CMAKE_BINARY_DIR}/openms-core-include")
      file(GLOB _openmscore_headers "${OpenMSCore_GENERATED_DIR}/*.h")
      foreach(_header IN LISTS _openmscore_headers)
        get_filename_component(_name "${_header}" NAME)
        set(_text "#include \"${_header}\"\n")
        set(_place "${OpenMSCore_FORWARDING_DIR}/OpenMS/${_name}")
        set(_former "")
        if(EXISTS "${_place}")
          file(READ "${_place}" _former)
        endif()
        if(NOT _text STREQUAL _former)
          file(WRITE "${_place}" "${_text}")
        endif()
      endforeach()
    endif()
  endif()
endif()

if(OpenMSCore_GENERATED_DIR AND EXISTS "${OpenMSCore_GENERATED_DIR}/openms_package_version.h")
  file(STRINGS "${OpenMSCore_GENERATED_DIR}/openms_package_version.h" _openmscore_version
    REGEX "define OPENMS_PACKAGE_VERSION \"")
  string(REGEX MATCH "[0-9]+\\.[0-9]+\\.[0-9]+" OpenMSCore_VERSION "${_openmscore_version}")
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenMSCore
  REQUIRED_VARS OpenMSCore_LIBRARY OpenMSCore_INCLUDE_DIR OpenMSCore_GENERATED_DIR
                OpenMSCore_BOOST_INCLUDE_DIR
  VERSION_VAR OpenMSCore_VERSION
  REASON_FAILURE_MESSAGE "On Debian: apt-get install libopenms-dev libboost-dev")

if(OpenMSCore_FOUND AND NOT TARGET OpenMSCore::OpenMSCore)
  set(_openmscore_includes "${OpenMSCore_INCLUDE_DIR}" "${OpenMSCore_BOOST_INCLUDE_DIR}")
  if(OpenMSCore_FORWARDING_DIR)
    list(PREPEND _openmscore_includes "${OpenMSCore_FORWARDING_DIR}")
  endif()
  add_library(OpenMSCore::OpenMSCore UNKNOWN IMPORTED)
  set_target_properties(OpenMSCore::OpenMSCore PROPERTIES
    IMPORTED_LOCATION "${OpenMSCore_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${_openmscore_includes}")
endif()

mark_as_advanced(OpenMSCore_INCLUDE_DIR OpenMSCore_LIBRARY OpenMSCore_BOOST_INCLUDE_DIR)
