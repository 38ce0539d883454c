# Link krpre_warnings (PRIVATE) into every target of ours.
add_library(krpre_warnings INTERFACE)
target_compile_options(krpre_warnings INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)

option(KRPRE_LTO "Optimise at link time" OFF)
if(KRPRE_LTO)
  set(CMAKE_INTERPROCEDURAL_OPTIMIZATION ON)
endif()
