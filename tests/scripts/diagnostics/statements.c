int f()
{
  int x;
  if (x return 1;
  if (x) int y;
  while (x return 1;
  while (x) int w;
  do x = 1; while (x; x = 3;
  do x = 1; while (x) x = 2;
  for (x = 0; x < 3; x++ ;
  for (x = 0; x < 3; x++) int z;
  switch (x) { }
  switch (x) { case 1 x = 2; }
  switch (x) { default x = 2; }
  switch (x) { case 1: continue; }
  if (x) break;
  if (x) { continue; }
  { case 1: ; }
  goto ;
  goto x x = 1;
  while (x) { break }
  while (x) { continue }
  if (x) x = 1 ; else (x) = 2
  x = 5;
  return 5 }
int after() { break; return 0; }
int more() { continue; return 0; }
// args: -morvquiet
