int main()
{
printf("%s %s %s [%s]\n", morv_hex(255, 0), morv_hex(255, 4), morv_hex(0 - 1, 12), morv_hex(1, 0 - 1));
printf("%s %s %s\n", morv_bin(10, 0), morv_bin(10, 8), morv_bin(0 - 1, 99));
printf("%d %d %d %d\n", morv_parse_hex("ff"), morv_parse_hex(" 0x1Fz"), morv_parse_hex("z"), morv_parse_hex("ffffffff"));
printf("%d %d %d %d\n", morv_atoi("42"), morv_atoi(" -7 apples"), morv_atoi("x"), morv_atoi("4294967298"));
printf("%d %d %d\n", morv_bits(43981, 4, 8), morv_bits(0 - 1, 28, 8), morv_bits(1, 32, 1));
return 0;
}
