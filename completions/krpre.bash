# bash completion of krpre; made by "krpre --completions=bash".
_krpre() {
  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} joined=
  # Bash takes the "=" of a long option for a word.
  if [[ $cur == = ]]; then cur= joined=1
  elif [[ $prev == = ]]; then prev=${COMP_WORDS[COMP_CWORD-2]} joined=1; fi
  _krpre_words() { mapfile -t COMPREPLY < <(compgen "$@" -- "$cur"); }
  case $prev in
    -I|--include) _krpre_words -d; return ;;
    -D|--define) return ;;
    --files-from) _krpre_words -f; return ;;
    --bundle) _krpre_words -f; return ;;
    --stdin-name) _krpre_words -f; return ;;
    --precompiled) if [[ $joined ]]; then _krpre_words -d; return; fi ;;
    -o|--output) _krpre_words -f; return ;;
    -o) _krpre_words -f; return ;;
    --error) return ;;
    --output) return ;;
    -ffile-prefix-map) return ;;
    -MF) _krpre_words -f; return ;;
    -MT) return ;;
    --key) return ;;
    --color) _krpre_words -W 'always never auto'; return ;;
    -W|--warn) return ;;
    --max-errors) return ;;
    --diagnostics) _krpre_words -W 'classic long json gcc msvc sarif'; return ;;
    -j|--jobs) return ;;
    --explain) return ;;
    --completions) _krpre_words -W 'bash zsh fish man'; return ;;
  esac
  if [[ $cur == -* ]]; then
    case ${COMP_WORDS[1]} in
      check) _krpre_words -W '-I --include -D --define --files-from -0 --null --bundle --stdin-name --color -W --warn --unused --all-errors --max-errors --diagnostics --progress -j --jobs --list-warnings -h --help' ;;
      coverage) _krpre_words -W '-I --include -D --define --files-from -0 --null -o --output -h --help' ;;
      explain) _krpre_words -W '-I --include -D --define --json --color -h --help' ;;
      rules) _krpre_words -W '-I --include -D --define --key --listing --json --color -h --help' ;;
      bundle) _krpre_words -W '-I --include -D --define -o --output -ffile-prefix-map -W --warn --max-errors -h --help' ;;
      reduce) _krpre_words -W '-I --include -D --define -o --error --output -h --help' ;;
      pack) _krpre_words -W '-o --output -h --help' ;;
      unpack) _krpre_words -W '-o --output -h --help' ;;
      *) _krpre_words -W '-I --include -D --define --files-from -0 --null --bundle --stdin-name --precompiled -o --output --always-write --save-temps -ffile-prefix-map -fsyntax-only -MD -MF -MT -MP --color -W --warn --all-errors --max-errors --diagnostics -T --trace --progress -q --quiet -j --jobs --classic --explain --completions --list-warnings -h --help -V --version' ;;
    esac
    return
  fi
  if ((COMP_CWORD > 1)); then
    case ${COMP_WORDS[1]} in
      pack|unpack) _krpre_words -f; return ;;
    esac
  fi
  mapfile -t COMPREPLY < <(
    ((COMP_CWORD > 1)) || compgen -W 'check coverage explain rules bundle reduce pack unpack' -- "$cur"
    compgen -d -- "$cur"
    compgen -f -- "$cur" | grep -iE '\.(prw|prg|prx|zorb|krh|khu)$')
}
complete -o filenames -F _krpre krpre
