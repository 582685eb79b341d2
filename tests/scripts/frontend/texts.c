int main()
{
  iprint("a\0b");
  iprint("tab\there");
  iprint("a \"quoted\" word");
  iprint("back\\slash");
  iprint("\x41\q\'");
  iprint("// no comment /* nor here */");
  iprint("it's #define $x %d");
  return 0;
}
