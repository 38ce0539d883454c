# krpre_add_tables(<target> GRAMMAR korelpre): makes the scanner and parser tables of
# tools/grammars/<GRAMMAR>.lex and .y and compiles them into the target. Who links the target can
# include "ssvp40xpf/<GRAMMAR>tokens.h" and "ssvp40xpf/<GRAMMAR>productions.h". The build fails on a
# conflict that the grammar does not know.
find_package(BISON 3.8 REQUIRED)
find_package(Python3 3.11 REQUIRED COMPONENTS Interpreter)

function(krpre_add_tables target)
  cmake_parse_arguments(T "" "GRAMMAR" "" ${ARGN})
  set(source ${CMAKE_SOURCE_DIR}/tools/grammars/${T_GRAMMAR})
  set(layout ${CMAKE_SOURCE_DIR}/ssvp40xpf/sstableformat.h)
  set(tablegen ${CMAKE_SOURCE_DIR}/tools/tablegen)
  set(modules automaton charexpr emitcpp generror grammar images indexes layout lexspec report tablegen)
  list(TRANSFORM modules REPLACE "(.+)" "${tablegen}/\\1.py")
  set(include_dir ${CMAKE_BINARY_DIR}/generated)
  set(out ${include_dir}/ssvp40xpf)
  file(MAKE_DIRECTORY ${out})

  set(report ${out}/${T_GRAMMAR}.xml)
  add_custom_command(
    OUTPUT ${report}
    # tablegen judges the conflicts.
    COMMAND ${BISON_EXECUTABLE} -Wno-conflicts-sr -Wno-conflicts-rr --xml=${report} -o /dev/null
            ${source}.y
    DEPENDS ${source}.y
    COMMENT "Building the automaton of ${T_GRAMMAR}.y"
    VERBATIM)

  set(tables ${out}/${T_GRAMMAR}tokens.h ${out}/${T_GRAMMAR}productions.h
      ${out}/${T_GRAMMAR}tables.cpp)
  add_custom_command(
    OUTPUT ${tables}
    COMMAND ${Python3_EXECUTABLE} -B ${tablegen}/tablegen.py --grammar ${T_GRAMMAR} --lex ${source}.lex
            --yacc ${source}.y --report ${report} --layout ${layout} --out ${out}
    DEPENDS ${modules} ${layout} ${source}.lex ${source}.y ${report}
    COMMENT "Making the tables of ${T_GRAMMAR}"
    VERBATIM)

  target_sources(${target} PRIVATE ${tables})
  target_include_directories(${target} PUBLIC ${include_dir})
endfunction()
