/* before */ int /* between */ main /* over
several
lines */ ( /* in */ ) // behind
{ // a body /* opens nothing
  /* first */ printf("1"); /* next */ /* another */ printf("2"); // printf("no");
  int x;
  x = 1 /* plus */ + /* on
     the next */ 2; // done
  printf("%d", x); /***/ /* ** // */ printf("3b"); /**/
  /* / * */
  //
  x = 8/*by*//*two*// 2; printf("%d", x);
  /* "unclosed text */ printf("4"); // 'unclosed character
  return 0; // last
} // the end
/* and behind it */ // "
