# fish completion for vorc-view
complete -c vorc-view -s o -r -F -d 'name of the page, or begin of names'
complete -c vorc-view -l attention -d 'draw attention weights of a trace'
complete -c vorc-view -s I -x -a '(__fish_complete_directories)' -d 'search a folder for included files'
complete -c vorc-view -s D -x -d 'define a macro'
complete -c vorc-view -l help -s h -d 'show the help'
complete -c vorc-view -l version -d 'show the version'
