# What all targets of this project have in common.

# PelgrinOptions: language level, and warnings. Linked privately; nothing of it reaches
# users of the package. To g++ what one source of a unit names is shadowed by enumerators
# in the headers of the next.
add_library(PelgrinOptions INTERFACE)
target_compile_features(PelgrinOptions INTERFACE cxx_std_17)
target_compile_options(PelgrinOptions INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wnon-virtual-dtor
  $<$<OR:$<CXX_COMPILER_ID:Clang>,$<NOT:$<BOOL:${PELGRIN_UNITY}>>>:-Wshadow>)

# pelgrin_units(TARGET): where PELGRIN_UNITY is ON, sources of the target are compiled
# together, as units.py tells. That takes a third of the time, hides a missing include,
# and compiles more when one source has changed, so the developers' build leaves it OFF.
function(pelgrin_units target)
  if(NOT PELGRIN_UNITY)
    return()
  endif()
  find_package(Python3 COMPONENTS Interpreter QUIET)
  if(NOT Python3_FOUND)
    return() # it takes longer, nothing else
  endif()
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "^[^$].*\\.cpp$")
  execute_process(
    COMMAND "${Python3_EXECUTABLE}" "${PROJECT_SOURCE_DIR}/cmake/units.py"
      "${CMAKE_CURRENT_SOURCE_DIR}" ${sources}
    OUTPUT_VARIABLE units COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "[^\n]+" units "${units}")
  foreach(line IN LISTS units)
    string(REGEX MATCH "^([0-9]+) (.*)$" line "${line}")
    set_source_files_properties("${CMAKE_MATCH_2}" PROPERTIES UNITY_GROUP unit${CMAKE_MATCH_1})
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
  # g++ takes the unnamed namespace of a source for that of a header.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
  # They decide what is a unit.
  foreach(source IN LISTS sources ITEMS "${PROJECT_SOURCE_DIR}/cmake/units.py")
    get_filename_component(source "${source}" ABSOLUTE)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${source}")
  endforeach()
endfunction()

# PelgrinStrictOptions: further warnings for the library and the host program. The
# others have the macros of test and benchmark libraries in their sources. Left out
# are -Wuseless-cast, as a cast of a 64-bit number to size_t is useless on some
# systems only, and -Wnull-dereference, which guesses within the standard library.
add_library(PelgrinStrictOptions INTERFACE)
target_link_libraries(PelgrinStrictOptions INTERFACE PelgrinOptions)
target_compile_options(PelgrinStrictOptions INTERFACE
  -Wcast-align -Wcast-qual -Wextra-semi -Wformat=2 -Wold-style-cast -Woverloaded-virtual
  -Wredundant-decls -Wsuggest-override -Wundef -Wzero-as-null-pointer-constant
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-branches;-Wduplicated-cond;-Wlogical-op>)
