# Who may include whom, checked by reading every #include in the tree. Run as a test:
#   cmake -DROOT=<source folder> -P cmake/CheckLayers.cmake
#
# Includes go downwards only, by path from the root, and each outside library is used in the places
# named here and nowhere else. A finding is one line, "file:line: what is wrong".

cmake_minimum_required(VERSION 3.25)

# folder -> folders and files of ours it may include besides itself
set(ours_include "")
set(ours_lib_base "")
set(ours_lib_gzip lib_base/)
set(ours_ssvp40xpf "")
set(ours_korelpre ssvp40xpf/ lib_gzip/ lib_base/)
set(ours_preprocessor korelpre/ lib_gzip/ lib_base/ include/)
set(ours_cli include/)
set(ours_tools ssvp40xpf/sstableformat.h)
set(folders include lib_base lib_gzip ssvp40xpf korelpre preprocessor cli tools)

# Files that may include more than their folder.
set(also_ssvp40xpf/ayacc lib_base/)

# Outside headers: pattern -> the files (as patterns) that may use them
set(outside
    "^Q[A-Za-z]|^Qt[A-Z]" "^lib_base/(translateqt|regexp)\\.(h|cpp)$|^tools/tablegen/yaccimage\\.(h|cpp)$"
    "^z(lib|conf)\\.h$" "^lib_gzip/"
    "^xxhash\\.h$" "^korelpre/headers/contenthash\\.cpp$"
    "^jni(_md)?\\.h$" "^preprocessor/host/jni[a-z]*\\.(h|cpp)$"
    "^CLI/" "^cli/"
    "^nlohmann/" "^cli/"
    "^g(test|mock)/|^benchmark/" "^$")

# The only header that leaves the tree is plain C and leans on nothing of C++.
set(c_headers stddef.h stdint.h stdbool.h limits.h)

set(findings "")

# Sets `out` to whether `folder` (through `file`) may include our own header `name`.
function(may_include_ours file folder name out)
  string(REGEX REPLACE "\\.[^.]*$" "" stem "${file}")
  set(${out} TRUE PARENT_SCOPE)
  foreach(allowed ${folder}/ ${ours_${folder}} ${also_${stem}})
    string(FIND "${name}" "${allowed}" at)
    if(at EQUAL 0)
      return()
    endif()
  endforeach()
  set(${out} FALSE PARENT_SCOPE)
endfunction()

# Sets `out` to whether `file` may include the outside header `name`.
function(may_include_outside file folder name out)
  set(${out} TRUE PARENT_SCOPE)
  if(folder STREQUAL "include" AND NOT name IN_LIST c_headers)
    set(${out} FALSE PARENT_SCOPE)
    return()
  endif()
  set(rules ${outside})
  while(rules)
    list(POP_FRONT rules header users)
    if(name MATCHES "${header}" AND NOT file MATCHES "${users}")
      set(${out} FALSE PARENT_SCOPE)
    endif()
  endwhile()
endfunction()

function(check_file file folder)
  # Semicolons and brackets would be taken for list syntax.
  file(READ "${ROOT}/${file}" text)
  string(REGEX REPLACE "[;\\[]|\\]" " " text "${text}")
  string(REPLACE "\n" ";" lines "${text}")
  set(number 0)
  foreach(line IN LISTS lines)
    math(EXPR number "${number} + 1")
    if(NOT line MATCHES "^[ \t]*#[ \t]*include[ \t]*([<\"])([^>\"]+)[>\"]")
      continue()
    endif()
    set(name "${CMAKE_MATCH_2}")
    if(CMAKE_MATCH_1 STREQUAL "<")
      may_include_outside("${file}" "${folder}" "${name}" allowed)
    elseif(EXISTS "${ROOT}/${name}")
      may_include_ours("${file}" "${folder}" "${name}" allowed)
    elseif(name MATCHES "/")
      # Generated: it stands at the same path under the build folder.
      may_include_ours("${file}" "${folder}" "${name}" allowed)
    else()
      set(allowed FALSE)
      string(APPEND name " (write the path from the root)")
    endif()
    if(NOT allowed)
      list(APPEND findings "${file}:${number}: ${folder}/ must not include ${name}")
    endif()
  endforeach()
  set(findings "${findings}" PARENT_SCOPE)
endfunction()

set(checked 0)
foreach(folder ${folders})
  file(GLOB_RECURSE files RELATIVE ${ROOT} ${ROOT}/${folder}/*.h ${ROOT}/${folder}/*.c ${ROOT}/${folder}/*.cpp)
  foreach(file ${files})
    check_file("${file}" "${folder}")
    math(EXPR checked "${checked} + 1")
  endforeach()
endforeach()

if(checked EQUAL 0)
  message(FATAL_ERROR "no source found under ${ROOT}")
endif()
if(findings)
  list(JOIN findings "\n" text)
  message(NOTICE "${text}")
  message(FATAL_ERROR "includes against the ladder")
endif()
message(STATUS "${checked} files keep the ladder")
