# bash completion for vorc
_vorc() {
  local cur=${COMP_WORDS[COMP_CWORD]} prefix word source=
  local words="-morv -morvquiet -rtl -llmtrace -I -D -cpu32 -cpu64 -addr32 -addr64 -core= exe= -o0 -o1
    -pic -compress -Werr -debug -nodebug --version --"
  COMPREPLY=()
  # "=" splits words: look at the whole line.
  local before=${COMP_LINE:0:COMP_POINT}
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do [[ $word == *.@(c|cc|cpp|h|morv) ]] && source=$word; done
  prefix=${before##* }
  # Behind the source, and behind "--", words are arguments of the script.
  if [[ $before == *" -- "* || (-n $source && $prefix != -*) ]]; then
    COMPREPLY=($(compgen -f -- "$cur"))
    compopt -o filenames
    return
  fi
  case $prefix in
    -core=*) COMPREPLY=($(compgen -W "rv32i rv32 rv64 aarch64" -- "${prefix#*=}")) ;;
    exe=* | -exe=* | exeformat=* | -exeformat=*) COMPREPLY=($(compgen -W "native elf pe" -- "${prefix#*=}")) ;;
    -I*) COMPREPLY=($(compgen -d -P -I -- "${prefix#-I}")); compopt -o nospace ;;
    -*) COMPREPLY=($(compgen -W "$words" -- "$cur"))
        [[ ${COMPREPLY[*]} == *= || ${COMPREPLY[*]} == -[ID] ]] && compopt -o nospace ;;
    e | ex | exe) COMPREPLY=(exe= $(compgen -f -X '!*.@(c|cc|cpp|h|morv)' -- "$cur")); compopt -o nospace ;;
    *) COMPREPLY=($(compgen -f -X '!*.@(c|cc|cpp|h|morv)' -- "$cur") $(compgen -d -- "$cur"))
       compopt -o filenames ;;
  esac
}
shopt -q extglob || shopt -s extglob
complete -F _vorc vorc
