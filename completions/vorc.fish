# fish completion for vorc
function __vorc_has_source
    string match -qr '\.(c|cc|cpp|h|morv)$' -- (commandline -opc)
end
complete -c vorc -n __vorc_has_source -F
complete -c vorc -n 'not __vorc_has_source' -f -a '(__fish_complete_suffix .c .cc .cpp .h .morv)'
complete -c vorc -n 'not __vorc_has_source' -f -a 'exe=native exe=elf exe=pe' -d 'container of the executable'
complete -c vorc -o version -l version -d 'print name and version'
complete -c vorc -o morv -d 'run the source as a script'
complete -c vorc -o morvquiet -d 'leave out status lines'
complete -c vorc -o rtl -d 'with -morv, write Verilog instead of running the script'
complete -c vorc -o llmtrace -d 'let the tensor functions explain their steps'
complete -c vorc -s I -x -a '(__fish_complete_directories)' -d 'search a folder for included files'
complete -c vorc -s D -x -d 'define a macro'
complete -c vorc -o cpu32 -d '32-bit registers'
complete -c vorc -o cpu64 -d '64-bit registers'
complete -c vorc -o addr32 -d '32-bit addresses'
complete -c vorc -o addr64 -d '64-bit addresses'
complete -c vorc -f -a '-core=rv32i -core=rv32 -core=rv64 -core=aarch64' -n 'string match -q -- "-c*" (commandline -ct)'
complete -c vorc -o o0 -d 'no optimization'
complete -c vorc -o o1 -d 'reuse values in registers'
complete -c vorc -o pic -d 'position-independent code'
complete -c vorc -o compress -d 'deflate the symbol tables'
complete -c vorc -o Werr -d 'treat warnings as errors'
complete -c vorc -o debug -d 'keep debug symbols'
complete -c vorc -o nodebug -d 'strip debug symbols'
