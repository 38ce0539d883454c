# KRPRE_SANITIZE: what all targets, libkrpre.so among them, are instrumented with.
set(KRPRE_SANITIZE "" CACHE STRING "Sanitizer: address (with undefined behaviour), memory or thread")
set_property(CACHE KRPRE_SANITIZE PROPERTY STRINGS "" address memory thread)

set(sanitizers_address -fsanitize=address,undefined -fno-sanitize-recover=all)
set(sanitizers_thread -fsanitize=thread)
# Knows of the memory that instrumented code has written: the standard library is trusted blindly.
set(sanitizers_memory -fsanitize=memory -fsanitize-memory-track-origins)

if(KRPRE_SANITIZE)
  if(NOT DEFINED sanitizers_${KRPRE_SANITIZE})
    message(FATAL_ERROR "KRPRE_SANITIZE must be address, memory or thread, not '${KRPRE_SANITIZE}'")
  endif()
  if(KRPRE_SANITIZE STREQUAL "memory" AND NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "KRPRE_SANITIZE=memory needs clang")
  endif()
  add_compile_options(${sanitizers_${KRPRE_SANITIZE}} -fno-omit-frame-pointer)
  add_link_options(${sanitizers_${KRPRE_SANITIZE}})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Instrumented, the standard library's own headers look uninitialised to GCC 12.
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
endif()
