typedef int T;
T good, *also;
T 5;
T one two;
int after; int after;
