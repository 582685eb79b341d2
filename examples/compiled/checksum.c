// calls: crc32_of_text(); adler(5); bits(255)
// A checksum as a device would compute it: shifts, masks and a table in memory.

unsigned int table[256];
char message[] = "The quick brown fox";

void make_table(void)
{
  int i;
  int bit;
  unsigned int value;
  for (i = 0; i < 256; i++) {
    value = i;
    for (bit = 0; bit < 8; bit++) {
      if (value & 1) value = (value >> 1) ^ 0xEDB88320;
      else value = value >> 1;
    }
    table[i] = value;
  }
}

unsigned int crc32_of_text(void)
{
  int i;
  unsigned int crc;
  make_table();
  crc = 0xFFFFFFFF;
  for (i = 0; message[i] != 0; i++) crc = (crc >> 8) ^ table[(crc ^ message[i]) & 255];
  return crc ^ 0xFFFFFFFF;
}

unsigned int adler(int letters)
{
  unsigned int low;
  unsigned int high;
  int i;
  low = 1;
  high = 0;
  for (i = 0; i < letters; i++) {
    low = (low + message[i]) % 65521;
    high = (high + low) % 65521;
  }
  return high * 65536 + low;
}

int bits(unsigned int value)
{
  int count;
  count = 0;
  while (value != 0) {
    value &= value - 1;
    count++;
  }
  return count;
}
