# krpre_add_tables(<target> GRAMMAR korelpre STATES 299 CONFLICTS 130): makes the scanner and parser
# tables of tools/grammars/<GRAMMAR>.lex and .y and compiles them into the target. Who links the
# target can include "ssvp40xpf/<GRAMMAR>tokens.h". The build fails when the automaton has another
# number of states or of shift/reduce conflicts.
find_package(BISON 3.8 REQUIRED)

function(krpre_add_tables target)
  cmake_parse_arguments(T "" "GRAMMAR;STATES;CONFLICTS" "" ${ARGN})
  set(source ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../tools/grammars/${T_GRAMMAR})
  cmake_path(NORMAL_PATH source)
  set(include_dir ${CMAKE_BINARY_DIR}/generated)
  set(out ${include_dir}/ssvp40xpf)
  file(MAKE_DIRECTORY ${out})

  set(report ${out}/${T_GRAMMAR}.xml)
  add_custom_command(
    OUTPUT ${report}
    # tablegen counts the conflicts.
    COMMAND ${BISON_EXECUTABLE} -Wno-conflicts-sr -Wno-conflicts-rr --xml=${report} -o /dev/null
            ${source}.y
    DEPENDS ${source}.y
    COMMENT "Building the automaton of ${T_GRAMMAR}.y"
    VERBATIM)

  set(tables ${out}/${T_GRAMMAR}tokens.h ${out}/${T_GRAMMAR}tables.cpp)
  add_custom_command(
    OUTPUT ${tables}
    COMMAND tablegen --grammar ${T_GRAMMAR} --lex ${source}.lex --yacc ${source}.y
            --report ${report} --out ${out} --conflicts ${T_CONFLICTS} --states ${T_STATES}
    DEPENDS tablegen ${source}.lex ${source}.y ${report}
    COMMENT "Making the tables of ${T_GRAMMAR}"
    VERBATIM)

  target_sources(${target} PRIVATE ${tables})
  target_include_directories(${target} PUBLIC ${include_dir})
endfunction()
