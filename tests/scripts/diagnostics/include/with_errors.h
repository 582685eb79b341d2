// a header with trouble
int twice;
int twice;
#if 1
