// The registers of a serial port as bit fields, with a union to see them as whole words.
//
//   vorc -morv -morvquiet register_map.c
//
// Structures are packed and bit fields fill their unit from the lowest bit up, so that a
// structure can be laid over a register as the data sheet draws it.

struct ControlBits { int enable : 1; int parity : 2; int stop : 1; int divisor : 12; int window : 16; };
struct StatusBits { int ready : 1; int overrun : 1; int framing : 1; int level : 5; int last : 8; int rest : 16; };

union Control { int word; struct ControlBits bits; };
union Status { int word; struct StatusBits bits; };

struct Port { union Control control; union Status status; int data; };
struct Port port;

enum Parity { NONE, EVEN, ODD };
#define CLOCK 24000000

// Sets up the port; answers the rate that the divisor gives.
int configure(int rate, int parity)
{
  port.control.word = 0;
  port.control.bits.divisor = CLOCK / (16 * rate);
  port.control.bits.parity = parity;
  port.control.bits.enable = 1;
  return CLOCK / 16 / port.control.bits.divisor;
}

// What the device would do when a byte comes in.
void receive(int byte)
{
  if (port.status.bits.level == 31) port.status.bits.overrun = 1;
  else port.status.bits.level = port.status.bits.level + 1;
  port.status.bits.ready = 1;
  port.status.bits.last = byte;
  port.data = byte;
}

void show(char *name, int word)
{
  printf("%-8s 0x%08x  %s\n", name, word, morv_bin(word, 32));
}

int main()
{
  int i; int rate;
  rate = configure(9600, EVEN);
  printf("asked for 9600, got %d\n", rate);
  show("control", port.control.word);
  printf("enable %d, parity %d, divisor %d\n", port.control.bits.enable, port.control.bits.parity,
         port.control.bits.divisor);

  // The same fields taken out of the word by hand.
  printf("by hand: enable %d, parity %d, divisor %d\n", morv_bits(port.control.word, 0, 1),
         morv_bits(port.control.word, 1, 2), morv_bits(port.control.word, 4, 12));

  port.status.word = 0;
  for (i = 0; i < 40; i++) receive('A' + i);
  show("status", port.status.word);
  printf("level %d, overrun %d, last '%c'\n", port.status.bits.level, port.status.bits.overrun,
         port.status.bits.last);

  // A value too wide for its field keeps its low bits and leaves the neighbours alone.
  port.control.bits.parity = 7;
  printf("parity %d, stop %d, divisor %d\n", port.control.bits.parity, port.control.bits.stop,
         port.control.bits.divisor);

  printf("sizes: control %d, status %d, port %d bytes\n", sizeof(union Control), sizeof(union Status),
         sizeof(struct Port));
  return 0;
}
