#define TWO 2
#define NAME TWO
#define PAREN (2)
#define EMPTY
#define ZERO 0
#define SHOW(t) printf(t);
int main()
{
#if TWO
  SHOW("number")
#endif
#if NAME
  SHOW("a name for a number")
#endif
#if PAREN
  SHOW("parenthesis")
#endif
#if EMPTY
  SHOW("empty")
#elif TWO
  SHOW("the next branch")
#else
  SHOW("the last branch")
#endif
#if 0
#if 1
  undefined
#else
  undefined
#endif
#elif UNKNOWN
  SHOW("unknown")
#else
  SHOW("behind what is skipped")
#endif
#if ZERO
  SHOW("zero")
#endif
#if defined(TWO)
  SHOW("defined")
#endif
#if !ZERO
  SHOW("not")
#endif
#if 1 > 2
  SHOW("only the first token counts")
#endif
#if 0x10
  SHOW("hexadecimal")
#endif
#if -1
  SHOW("negative")
#endif
#if 7 any other words
  SHOW("words behind")
#endif
#ifdef EMPTY
  SHOW("an empty name is defined")
#endif
#ifndef UNKNOWN
  SHOW("an unknown one is not")
#endif
# if TWO
  SHOW("blanks")
 #	endif
#undef TWO
#ifdef TWO
  SHOW("still defined")
#endif
  return 0;
}
