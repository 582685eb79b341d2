# bash completion for vorc
_vorc() {
  local cur=${COMP_WORDS[COMP_CWORD]} prefix
  local words="-morv -morvquiet -rtl -llmtrace -I -D -cpu32 -cpu64 -addr32 -addr64 -core= exe= -o0 -o1
    -pic -compress -Werr -debug -nodebug --version --"
  COMPREPLY=()
  # Behind "--" everything is a script's argument. "=" splits words: look at the whole line.
  local before=${COMP_LINE:0:COMP_POINT}
  [[ $before == *" -- "* ]] && { COMPREPLY=($(compgen -f -- "$cur")); return; }
  prefix=${before##* }
  case $prefix in
    -core=*) COMPREPLY=($(compgen -W "rv32i rv32 rv64 aarch64" -- "${prefix#*=}")) ;;
    exe=* | -exe=* | exeformat=* | -exeformat=*) COMPREPLY=($(compgen -W "native elf pe" -- "${prefix#*=}")) ;;
    -I*) COMPREPLY=($(compgen -d -P -I -- "${prefix#-I}")); compopt -o nospace ;;
    -*) COMPREPLY=($(compgen -W "$words" -- "$cur"))
        [[ ${COMPREPLY[*]} == *= || ${COMPREPLY[*]} == -[ID] ]] && compopt -o nospace ;;
    *) COMPREPLY=($(compgen -f -X '!*.@(c|cc|cpp|h|morv)' -- "$cur") $(compgen -d -- "$cur"))
       compopt -o filenames ;;
  esac
}
shopt -q extglob || shopt -s extglob
complete -F _vorc vorc
