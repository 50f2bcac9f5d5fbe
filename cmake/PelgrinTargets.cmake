# What all targets of this project have in common.

# PelgrinOptions: language level, and warnings that are errors for developers
# only. Linked privately; nothing of it reaches users of the package.
add_library(PelgrinOptions INTERFACE)
target_compile_features(PelgrinOptions INTERFACE cxx_std_17)
target_compile_options(PelgrinOptions INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor
  $<$<BOOL:${PELGRIN_DEVELOPER}>:-Werror>)
