int main()
{
printf("[%s]\n", ibash("printf '%s|' \"a  b\" c\\\\d; echo oops >&2"));
printf("[%s]\n", morv_trim(ibash("for i in 1 2 3; do echo -n $i; done | tr 2 x")));
printf("[%s] [%s]\n", ibash(""), ibash(5));
isetenv("WORD", "hello");
printf("[%s]\n", morv_trim(ibash("echo $WORD")));
ifile_write("my tool", "#!/bin/sh\nexit $(($1 + $#))\n");
ibash("chmod +x \"my tool\"");
isetenv("VMAKE_EXE", morv_concat(icwd(), "/my tool"));
printf("%d %d\n", imake("0 all"), imake("3"));
return 0;
}
