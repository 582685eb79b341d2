int a1 b; int a2 b; int a3 b; int a4 b; int a5 b; int a6 b; int a7 b; int a8 b; int a9 b; int a10 b;
int never 5;
int never 5;
// args: -morvquiet
