# fish completion for vorc-objdump
complete -c vorc-objdump -f -a '(__fish_complete_suffix .obj .symtab)'
complete -c vorc-objdump -l version -d 'print name and version'
