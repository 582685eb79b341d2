# bash completion for morv
_morv() {
  local cur=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} word script=
  COMPREPLY=()
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do [[ $word != -* ]] && script=$word; done
  case $previous in
    --doc) COMPREPLY=($(compgen -W "$(morv --list 2>/dev/null | sed -n 's/^  \([A-Za-z_0-9]*\)(.*/\1/p')" -- "$cur")); return ;;
    -e | -D | --list) return ;;
  esac
  if [[ -z $script && $cur == -* ]]; then
    COMPREPLY=($(compgen -W "-e -I -D -Werr -llmtrace --keep --list --doc --help --version --" -- "$cur"))
    return
  fi
  COMPREPLY=($(compgen -f -- "$cur"))
  compopt -o filenames
}
complete -F _morv morv
