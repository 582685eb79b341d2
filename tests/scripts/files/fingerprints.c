int main()
{
$s = "the quick brown fox jumps over the lazy dog and runs away from all of the hounds";
ifile_write("f_a.txt", $s);
ifile_write("f_b.txt", morv_replace_all($s, "dog", "cat"));
ifile_write("f_c.txt", "0123456789 9876543210 1357924680 0864297531 1122334455 6677889900 9080706050");
$a = morv_file_fingerprint("f_a.txt");
$b = ifile_fingerprint("f_b.txt");
$c = ifile_fingerprint("f_c.txt");
printf("%d %d\n", morv_fingerprint_similarity($a, $a), morv_fingerprint_similarity($a, $b) > 60);
printf("%d\n", morv_fingerprint_similarity($a, $c) < 20);
printf("[%s] [%s]\n", ifile_fingerprint("f_none.txt"), ifile_fingerprint(5));
printf("%d %d\n", morv_fingerprint_similarity($a, "x"), morv_fingerprint_similarity($a, 5));
return 0;
}
