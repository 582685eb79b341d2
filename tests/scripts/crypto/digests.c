int main()
{
printf("%s\n", morv_sha256(""));
printf("%s\n", morv_sha256("abc"));
printf("%s\n", morv_sha256_base64("abc"));
printf("[%s] [%s] [%s]\n", morv_sha256(5), morv_sha256_base64(5), morv_hmac_sha256("k", 5));
printf("%s\n", morv_hmac_sha256("kkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkkk", "text"));
morv_file_write("hashed.txt", "one two");
printf("%s\n", morv_file_hash("hashed.txt"));
printf("%d\n", morv_strcmp(ifile_hash("hashed.txt"), morv_sha256("one two")));
printf("[%s] [%s]\n", morv_file_hash("no-such-file"), morv_file_hash("."));
return 0;
}
