# Link krpre_warnings (PRIVATE) into every target of ours.
add_library(krpre_warnings INTERFACE)
target_compile_options(krpre_warnings INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
# A third of a first build's time. ccache, which spares that time too, keeps no object that was made so.
# Instrumented for a sanitizer, precompiled headers of the standard library get warnings of GCC 12.
if(NOT CMAKE_CXX_COMPILER_LAUNCHER AND NOT KRPRE_SANITIZE)
  target_precompile_headers(krpre_warnings INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:${CMAKE_SOURCE_DIR}/cmake/standardheaders.h>)
endif()

option(KRPRE_LTO "Optimise at link time" OFF)
if(KRPRE_LTO)
  set(CMAKE_INTERPROCEDURAL_OPTIMIZATION ON)
endif()
