int main()
{
printf("[%s][%s]", morv_qrcode_svg(5, 2), morv_qrcode_svg("a", "b"));
printf("[%s][%s]", morv_barcode_svg("a", 5, 2), morv_barcode_svg(5, "code128", 2));
printf("%d", morv_strcmp(morv_barcode_svg("a", "code128", "b"), morv_barcode_svg("a", "code128", 4)));
printf("[%s][%s]", morv_qrcode_read(5), morv_qrcode_read("arguments.c"));
printf("[%s][%s]", morv_barcode_read(5), morv_barcode_kind());
morv_file_write("flat.pgm", "P5 9 9 126\n" + "111111111111111111111111111111111111111111111111111111111111111111111111111111111");
printf("[%s]", morv_qrcode_read("flat.pgm"));
return 0;
}
