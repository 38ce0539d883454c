# krpre_preprocess(TARGET name SOURCES source...
#                  [INCLUDE_DIRECTORIES directory...] [DEFINES name[=value]...] [OPTIONS option...]
#                  [OUTPUT_DIRECTORY directory] [OUTPUTS variable])
#
# Adds a target that preprocesses the sources, each to a file in OUTPUT_DIRECTORY, which is the current
# binary directory by default; it is part of "all". The names of the outputs are stored in the variable.
#
# A source is preprocessed when it, a header that it includes, the command or the program has changed. An
# output that would not change keeps its time, so that nothing is made of it again. What is made of it
# names both, the target and the outputs, behind DEPENDS.
#
# Needs CMake 3.20 and one of the generators for Ninja and makefiles. KRPRE_PROGRAM is the program.
function(krpre_preprocess)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "TARGET;OUTPUT_DIRECTORY;OUTPUTS"
    "SOURCES;INCLUDE_DIRECTORIES;DEFINES;OPTIONS")
  if(arg_UNPARSED_ARGUMENTS OR NOT arg_TARGET OR NOT arg_SOURCES)
    message(FATAL_ERROR "krpre_preprocess: expected TARGET name SOURCES source... and nothing unknown; "
      "not understood: '${arg_UNPARSED_ARGUMENTS}'")
  endif()
  if(NOT KRPRE_PROGRAM)
    message(FATAL_ERROR "krpre_preprocess: the program krpre was not found; set KRPRE_PROGRAM")
  endif()
  if(NOT DEFINED arg_OUTPUT_DIRECTORY)
    set(arg_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
  endif()
  cmake_path(ABSOLUTE_PATH arg_OUTPUT_DIRECTORY BASE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
  file(MAKE_DIRECTORY ${arg_OUTPUT_DIRECTORY})

  foreach(list IN ITEMS sources own_directories directories outputs made)
    set(${list} "")  # the caller may have variables of these names
  endforeach()
  set(command ${KRPRE_PROGRAM} -MD)
  foreach(directory IN LISTS arg_INCLUDE_DIRECTORIES)
    cmake_path(ABSOLUTE_PATH directory NORMALIZE)
    list(APPEND command -I ${directory})
    list(APPEND directories ${directory})
  endforeach()
  foreach(define IN LISTS arg_DEFINES)
    list(APPEND command -D ${define})
  endforeach()
  list(APPEND command ${arg_OPTIONS})

  foreach(source IN LISTS arg_SOURCES)
    cmake_path(ABSOLUTE_PATH source NORMALIZE)
    cmake_path(GET source PARENT_PATH directory)
    list(APPEND sources ${source})
    list(APPEND own_directories ${directory})
  endforeach()
  set(hidden ${CMAKE_CURRENT_BINARY_DIR}/${arg_TARGET}.hidden)
  krpre_list_hidden_headers(${hidden} ${own_directories} ${directories})

  foreach(source IN LISTS sources)
    cmake_path(GET source STEM LAST_ONLY stem)
    set(output ${arg_OUTPUT_DIRECTORY}/${stem}.ppo)
    if(source MATCHES "\\.(zorb|p|w|py)$")
      set(output ${arg_OUTPUT_DIRECTORY}/${stem}.ppx_)
    endif()
    if(output IN_LIST outputs)
      message(FATAL_ERROR "krpre_preprocess: two sources of ${arg_TARGET} would be written to ${output}")
    endif()
    list(APPEND outputs ${output})
    krpre_add_command(${source} ${output})
  endforeach()
  add_custom_target(${arg_TARGET} ALL DEPENDS ${made})
  if(arg_OUTPUTS)
    set(${arg_OUTPUTS} ${outputs} PARENT_SCOPE)
  endif()
endfunction()

# Writes the headers that one of the same name in an earlier directory hides to a file, which changes
# when they do: dependency files do not tell that from now on another header is found.
function(krpre_list_hidden_headers file)
  set(seen "")
  set(hidden "")
  list(REMOVE_DUPLICATES ARGN)
  foreach(directory IN LISTS ARGN)
    file(GLOB_RECURSE names CONFIGURE_DEPENDS RELATIVE ${directory} ${directory}/*.ch)
    foreach(name IN LISTS names)
      if(name IN_LIST seen)
        string(APPEND hidden "${directory}/${name}\n")
      endif()
    endforeach()
    list(APPEND seen ${names})
  endforeach()
  file(CONFIGURE OUTPUT ${file} CONTENT "${hidden}" @ONLY)
endfunction()

# Adds the rule for an output, and what is made by it to the list `made`. Make compares times only, and
# the output may keep its own, so for make the rule makes a stamp. That has the time when krpre started:
# what is saved meanwhile is newer. Ninja looks whether an output changed, and needs no stamp.
#
# What CMake keeps for make of the dependency files only grows: a header that is gone would have its
# sources preprocessed for ever. So it is removed, and CMake reads the files again.
macro(krpre_add_command source output)
  set(rule COMMENT "krpre ${source}" DEPENDS ${source} ${hidden} ${KRPRE_PROGRAM}
    DEPFILE ${output}.d VERBATIM)
  if(CMAKE_GENERATOR MATCHES "Makefiles")
    set(stamp ${output}.stamp)
    string(REPLACE " " "\\ " target ${stamp})
    add_custom_command(OUTPUT ${stamp} BYPRODUCTS ${output}
      COMMAND touch ${stamp}.tmp
      COMMAND ${command} -MF ${output}.d -MT ${target} -o ${output} ${source}
      COMMAND rm -f ${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${arg_TARGET}.dir/compiler_depend.internal
      COMMAND mv ${stamp}.tmp ${stamp}
      ${rule})
    list(APPEND made ${stamp})
  else()
    add_custom_command(OUTPUT ${output} COMMAND ${command} -MF ${output}.d -o ${output} ${source}
      ${rule})
    list(APPEND made ${output})
  endif()
endmacro()
