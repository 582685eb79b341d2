# bash completion for vorc-sim
_vorc_sim() {
  local cur=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} file=
  local word
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do [[ $word == *.asm ]] && file=$word; done
  COMPREPLY=()
  case $previous in
    --calls) COMPREPLY=($(compgen -f -- "$cur")); compopt -o filenames; return ;;
    --call | --steps | --stack | --memory | --gap | --base) return ;;
  esac
  if [[ $previous == *.asm ]]; then
    # The procedures of the file.
    COMPREPLY=($(compgen -W "$(sed -n 's|^\(/\*[0-9]*:\*/\)\{0,1\} *PROCEDURE  *||p' "$file" 2>/dev/null)" -- "$cur"))
  elif [[ $cur == -* ]]; then
    COMPREPLY=($(compgen -W "--call --calls --globals --count --trace --steps --stack --memory --gap --base --instructions
      --version --help" -- "$cur"))
  elif [[ -z $file ]]; then
    COMPREPLY=($(compgen -f -X '!*.asm' -- "$cur") $(compgen -d -- "$cur"))
    compopt -o filenames
  fi
}
complete -F _vorc_sim vorc-sim
