// CRC-8 with the polynomial x^8 + x^2 + x + 1, a bit each clock: as hardware by -rtl, as a script without.
rtlbegin
// Two bytes at a time share one checksum.
module crc8_mix(first, second, mixed);
    input  [7:0] first;
    input  [7:0] second;
    output [7:0] mixed;
    assign mixed = first ^ second;
endmodule
rtlend

int crc8(int byte, int before) {
  int crc;
  int bits;
  crc = (byte ^ before) & 255;
  bits = 8;
  while (bits > 0) {
    crc = ((crc << 1) ^ ((crc >> 7) * 7)) & 255;
    bits = bits - 1;
  }
  return crc;
}

int main() {
  printf("%d\n", crc8(49, 0));
  return 0;
}
