# What all targets of this project have in common.

# PelgrinOptions: language level, and warnings that are errors for developers
# only. Linked privately; nothing of it reaches users of the package.
add_library(PelgrinOptions INTERFACE)
target_compile_features(PelgrinOptions INTERFACE cxx_std_17)
target_compile_options(PelgrinOptions INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor
  $<$<BOOL:${PELGRIN_DEVELOPER}>:-Werror>)

# pelgrin_precompile(TARGET HEADER...): these headers, and what of the standard library
# most sources need, are read once for all sources of the target where PELGRIN_PRECOMPILE
# is on. That hides a missing include, so the developers' build leaves it off.
function(pelgrin_precompile target)
  if(PELGRIN_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${ARGN}
      <algorithm> <filesystem> <functional> <map> <memory> <optional> <sstream> <string>
      <string_view> <vector>)
  endif()
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
