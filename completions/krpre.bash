# bash completion of krpre; made by "krpre --completions bash".
_krpre() {
  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}
  # Bash takes the "=" of a long option for a word.
  if [[ $cur == = ]]; then cur=
  elif [[ $prev == = ]]; then prev=${COMP_WORDS[COMP_CWORD-2]}; fi
  _krpre_words() { mapfile -t COMPREPLY < <(compgen "$@" -- "$cur"); }
  case $prev in
    -o|--output) _krpre_words -f; return ;;
    -I|--include) _krpre_words -d; return ;;
    -D|--define) return ;;
    -j|--jobs) return ;;
    -MF) _krpre_words -f; return ;;
    -MT) return ;;
    --stdin-name) _krpre_words -f; return ;;
    --diagnostics) _krpre_words -W 'auto classic long json gcc'; return ;;
  esac
  if [[ $cur == -* ]]; then
    _krpre_words -W '-o --output -I --include -D --define -j --jobs -MD -MF -MT -MP --always-write --precompiled --stdin-name --diagnostics -T --trace -q --quiet --classic --help --version'
    return
  fi
  mapfile -t COMPREPLY < <(
    ((COMP_CWORD > 1)) || compgen -W 'explain rules pack unpack' -- "$cur"
    compgen -d -- "$cur"
    compgen -f -- "$cur" | grep -iE '\.(prw|prg|prx|zorb|krh|khu)$')
}
complete -o filenames -F _krpre krpre
