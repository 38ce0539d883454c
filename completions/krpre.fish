# fish completion of krpre; made by "krpre --completions=fish".
function __krpre_is
    set -l words (commandline -opc)
    if contains -- "$words[2]" check coverage explain rules bundle reduce pack unpack
        contains -- $words[2] $argv
    else
        contains krpre $argv
    end
end
function __krpre_sources
    complete -C '__krpre_files '(commandline -ct) | string match -ri '.*(?:/|\.(?:prw|prg|prx|zorb|krh|khu))$'
end
complete -c krpre -f
complete -c krpre -n 'test (count (commandline -opc)) -eq 1' -a 'check coverage explain rules bundle reduce pack unpack'
complete -c krpre -n '__krpre_is krpre check coverage explain rules bundle reduce' -a '(__krpre_sources)'
complete -c krpre -n '__krpre_is pack unpack' -F
complete -c krpre -n '__krpre_is krpre check coverage explain rules bundle reduce' -s I -l include -x -a '(__fish_complete_directories)' -d 'search DIR, a directory or an archive (zip or tar), for include files; may be repeated'
complete -c krpre -n '__krpre_is krpre check coverage explain rules bundle reduce' -s D -l define -x -d 'define NAME before the first line of each source; may be repeated'
complete -c krpre -n '__krpre_is krpre check coverage' -l files-from -r -F -d 'read the names of more sources from FILE (- for standard input), one to a line'
complete -c krpre -n '__krpre_is krpre check coverage' -s 0 -l null -d 'the names in the file of --files-from are separated by zero bytes'
complete -c krpre -n '__krpre_is krpre check' -l bundle -r -F -d 'run from what krpre bundle has written, and write to standard output unless -o is given'
complete -c krpre -n '__krpre_is krpre check' -l stdin-name -r -F -d 'treat standard input as a source called NAME (default: stdin.prw)'
complete -c krpre -n '__krpre_is krpre' -l precompiled -d 'cache the standard header in DIR for later runs (default: krpre in $XDG_CACHE_HOME, or in ~/.cache)'
complete -c krpre -n '__krpre_is krpre' -s o -l output -r -F -d 'write outputs to the directory NAME, or the output of a single source to the file NAME (- for standard output)'
complete -c krpre -n '__krpre_is bundle' -s o -l output -r -F -d 'write to FILE (- for standard output) instead of the name of the source with .zip behind it'
complete -c krpre -n '__krpre_is reduce' -s o -r -F -d 'write to FILE (- for standard output) instead of the name of the source with .reduced.zip behind it'
complete -c krpre -n '__krpre_is reduce' -l error -x -d 'keep an error, by its number or slug'
complete -c krpre -n '__krpre_is reduce' -l output -x -d 'keep a text in the output'
complete -c krpre -n '__krpre_is pack unpack' -s o -l output -r -F -d 'write the result to FILE instead of replacing the input, which must be a single file'
complete -c krpre -n '__krpre_is coverage' -s o -l output -r -F -d 'write to FILE (- for standard output, the default)'
complete -c krpre -n '__krpre_is krpre' -l always-write -d 'rewrite outputs even when their content is unchanged'
complete -c krpre -n '__krpre_is krpre' -l save-temps -d 'keep what is read in place of each source (.pw_), in which pages, inline blocks and foreign sources are converted, beside its output'
complete -c krpre -n '__krpre_is krpre bundle' -o ffile-prefix-map -x -d 'where a file name in #line begins with OLD, write NEW instead of that; may be repeated, and the last that fits counts'
complete -c krpre -n '__krpre_is krpre' -o fsyntax-only -d 'write no output and no dependency file, whatever other options say of them'
complete -c krpre -n '__krpre_is krpre' -o MD -d 'write a dependency file (.d), for make or ninja, beside each output'
complete -c krpre -n '__krpre_is krpre' -o MF -r -F -d 'write the dependency file of a single source to FILE'
complete -c krpre -n '__krpre_is krpre' -o MT -x -d 'make TARGET the target of the rule instead of the output; may be repeated'
complete -c krpre -n '__krpre_is krpre' -o MP -d 'add an empty rule for each header, so that make does not fail when one is gone'
complete -c krpre -n '__krpre_is rules' -l key -x -d 'list only the rules that WORD in a statement would find'
complete -c krpre -n '__krpre_is rules' -l listing -d 'show each rule as the library lists it, with its kind, instead of as it is written'
complete -c krpre -n '__krpre_is explain rules' -l json -d 'print JSON'
complete -c krpre -n '__krpre_is krpre check explain rules' -l color -x -a 'always never auto' -d 'colour what is printed: always, never or auto (the default: only on a terminal)'
complete -c krpre -n '__krpre_is krpre check bundle' -s W -l warn -x -d 'look for what a warning is about, or for all; no-SLUG switches it off again, and error=SLUG, or error for all that are on, makes it an error; may be repeated'
complete -c krpre -n '__krpre_is check' -l unused -d 'also name the rules of headers, their optional groups and words, that none of the sources uses'
complete -c krpre -n '__krpre_is krpre check' -l all-errors -d 'go on after an error and tell the others of the source too, 20 at most; krpre check always does'
complete -c krpre -n '__krpre_is krpre check bundle' -l max-errors -x -d 'tell at most N errors of each source'
complete -c krpre -n '__krpre_is krpre check' -l diagnostics -x -a 'classic long json gcc msvc sarif' -d 'print messages as classic lines, long (with the source line, the includes and the rules behind an error; the default), json, gcc, msvc or sarif'
complete -c krpre -n '__krpre_is krpre' -s T -l trace -d 'trace the steps of each run'
complete -c krpre -n '__krpre_is krpre check' -l progress -d 'tell from the start how many of several sources are done, also where standard error is no terminal; without it only on a terminal, and after a second'
complete -c krpre -n '__krpre_is krpre' -s q -l quiet -d 'print no messages unless a source fails'
complete -c krpre -n '__krpre_is krpre check' -s j -l jobs -x -d 'run N jobs in parallel; 0 (the default) means one per core'
complete -c krpre -n '__krpre_is krpre' -l classic -d 'pass all further arguments to the library unchanged; must be the first argument'
complete -c krpre -n '__krpre_is krpre' -l explain -x -d 'explain an error or another message, by its number or slug, and exit'
complete -c krpre -n '__krpre_is krpre' -l completions -x -a 'bash zsh fish man' -d 'print the completions for bash, zsh or fish, or the option sections of the manual page (man), and exit'
complete -c krpre -n '__krpre_is krpre check' -l list-warnings -d 'print the warnings and exit'
complete -c krpre -n '__krpre_is krpre check coverage explain rules bundle reduce pack unpack' -s h -l help -d 'print this help and exit'
complete -c krpre -n '__krpre_is krpre' -s V -l version -d 'print the version and exit'
