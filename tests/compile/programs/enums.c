// calls: values(); variable(6); choose(0); choose(5); choose(6)
// calls: below_zero(7)
enum Colour { RED, GREEN = 5, BLUE };
enum { LOW = -2, NEXT };
enum Colour shared = GREEN;
int values() { return RED + GREEN * 10 + BLUE * 100 + LOW * 1000 + NEXT * 10000; }
int variable(int n) { enum Colour c; c = n; shared = c; return (c == BLUE) * 10 + shared; }
int choose(int n) { switch (n) { case RED: return 1; case GREEN: return 2; case BLUE: return 3; } return 4; }
unsigned int below_zero(unsigned int n) { return NEXT % n * 10 + LOW % n; }
