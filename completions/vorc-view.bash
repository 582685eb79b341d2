# bash completion for vorc-view
_vorc_view() {
  local cur=${COMP_WORDS[COMP_CWORD]} before=" ${COMP_WORDS[*]:0:COMP_CWORD} "
  COMPREPLY=()
  if [[ $cur == -* ]]; then
    COMPREPLY=($(compgen -W "-o -I -D -o1 -pic -cpu32 --attention --help --version" -- "$cur"))
  elif [[ $before == *" --attention "* || ${COMP_WORDS[COMP_CWORD-1]} == -o ]]; then
    COMPREPLY=($(compgen -f -- "$cur"))
    compopt -o filenames
  else
    COMPREPLY=($(compgen -f -X '!*.@(c|cc|cpp)' -- "$cur") $(compgen -d -- "$cur"))
    compopt -o filenames
  fi
}
shopt -q extglob || shopt -s extglob
complete -F _vorc_view vorc-view
