int main()
{
  $s = "nop";
  _asm("nop"); _asm($s);
  printf("%d\n", _asm("mov"));
  _asm(5);
  return 0;
}
