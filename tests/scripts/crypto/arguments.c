int main()
{
printf("[%s] [%s] [%s]\n", morv_sha256(5), morv_sha256_base64(5), morv_hmac_sha256("k", 5));
printf("%s [%s]\n", morv_pbkdf2("password", "73616C74", 4096), morv_file_hash("."));
printf("[%s] [%s]\n", morv_pbkdf2(1, "73616c74", 1), morv_pbkdf2("password", "73616c74", "1"));
$key = morv_random_hex(32);
$sealed = morv_encrypt($key, "the text");
printf("%d %d [%s] [%s]\n", morv_strlen($key), morv_strlen($sealed), morv_decrypt($key, $sealed), morv_decrypt($key, morv_concat("AAAA", $sealed)));
printf("[%s] [%s]\n", morv_decrypt($key, morv_encrypt($key, "")), morv_encrypt($key, 5));
printf("%d [%s] [%s]\n", morv_strlen(morv_random_hex(2047)), morv_random_hex(2048), morv_random_hex(0));
return 0;
}
