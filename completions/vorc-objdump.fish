# fish completion for vorc-objdump
complete -c vorc-objdump -f -a '(__fish_complete_suffix .obj)(__fish_complete_suffix .symtab)'
complete -c vorc-objdump -l headers -d 'the headers alone'
complete -c vorc-objdump -l link -d 'what a linker needs'
complete -c vorc-objdump -l version -d 'print name and version'
complete -c vorc-objdump -l help -d 'show the options'
