// calls: f(1)
// modes: -o1; -cpu32; -pic
// more pointers alive than there are registers: texts and steps of those without one
int f(int a)
{
  char *p0; char *p1; char *p2; char *p3; char *p4; char *p5; char *p6; char *p7; char *p8; char *p9;
  char *p10; char *p11; char *p12; char *p13; char *p14; char *p15; char *p16; char *p17; char *p18;
  char *p19; char *p20; char *p21; char *p22; char *p23; char *p24; char *p25; char *p26; char *p27;
  p0 = "ab"; p1 = "bc"; p2 = "cd"; p3 = "de"; p4 = "ef"; p5 = "fg"; p6 = "gh"; p7 = "hi"; p8 = "ij";
  p9 = "jk"; p10 = "kl"; p11 = "lm"; p12 = "mn"; p13 = "no"; p14 = "op"; p15 = "pq"; p16 = "qr"; p17 = "rs";
  p18 = "st"; p19 = "tu"; p20 = "uv"; p21 = "vw"; p22 = "wx"; p23 = "xy"; p24 = "yz"; p25 = "zb"; p26 = "ac";
  p27 = "bd";
  ++p0; p1++; p2++; ++p3; p4++; p5++; ++p6; p7++; p8++; ++p9; p10++; p11++; ++p12; p13++; p14++; ++p15;
  p16++; p17++; ++p18; p19++; p20++; ++p21; p22++; p23++; ++p24; p25++; p26++; ++p27;
  p0--; p2--; p4--; p6--; p8--; p10--; p12--; p14--; p16--; p18--; p20--; p22--; p24--; p26--;
  return a + *p0 + *p1 + *p2 + *p3 + *p4 + *p5 + *p6 + *p7 + *p8 + *p9 + *p10 + *p11 + *p12 + *p13 + *p14
  + *p15 + *p16 + *p17 + *p18 + *p19 + *p20 + *p21 + *p22 + *p23 + *p24 + *p25 + *p26 + *p27;
}
