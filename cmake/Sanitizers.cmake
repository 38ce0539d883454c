option(KRPRE_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
if(KRPRE_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Instrumented, the standard library's own headers look uninitialised to GCC 12.
    add_compile_options(-Wno-maybe-uninitialized)
  endif()
endif()
