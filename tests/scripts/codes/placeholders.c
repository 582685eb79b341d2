int main()
{
morv_img_free(1);
printf("%d", morv_img_new(8, 8));
printf("%d%d%d", morv_img_set(1, 2, 3, 4), morv_img_get(1, 2, 3), morv_img_line(1, 2, 3, 4, 5, 6));
printf("%d%d", morv_img_rect(1, 2, 3, 4, 5, 6), morv_img_fill_rect(1, 2, 3, 4, 5, 6));
printf("%d%d", morv_img_save_png(1, "a.png"), morv_image_crop("a", 1, 2, 3, 4, "b"));
printf("%d %d", morv_phash_similarity("a", "b"), morv_fingerprint_match("a", "b"));
printf("[%s][%s]", morv_image_phash("a"), morv_ocr_extract(5));
return 0;
}
