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
