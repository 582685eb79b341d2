int f(int a) { return a; }
rtlbegin
this is : not { C
rtlend dropped with the line
int main()
{
  try { broken syntax here ((( } catch (...) { as here } printf("one");
  try { { nested } } catch (int e) { } catch (char *e) { }
  rtlbegin
    x y z ( {
  rtlend
  printf("two");
  ;;
  if (f(0)) ; else ;
  {} {;}
  return 0;;
};
;
