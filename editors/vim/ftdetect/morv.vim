au BufRead,BufNewFile *.morv setfiletype morv
au BufRead * if getline(1) =~# '^#!.*\<morv\>' | set filetype=morv | endif
