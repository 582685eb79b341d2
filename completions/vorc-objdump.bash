# bash completion for vorc-objdump
_vorc_objdump() {
  local current=${COMP_WORDS[COMP_CWORD]}
  case $current in
    -*) mapfile -t COMPREPLY < <(compgen -W '--headers --link --version --help' -- "$current") ;;
    *) mapfile -t COMPREPLY < <(compgen -f -X '!*.@(obj|symtab)' -- "$current"; compgen -d -- "$current") ;;
  esac
}
complete -o filenames -F _vorc_objdump vorc-objdump
