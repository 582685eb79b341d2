int main()
{
$key = morv_random_hex(32);
$sealed = morv_encrypt($key, "the text");
printf("%d %d\n", morv_strlen($key), morv_strlen($sealed));
printf("[%s]\n", morv_decrypt($key, $sealed));
printf("[%s]\n", morv_decrypt(morv_random_hex(32), $sealed));
printf("[%s]\n", morv_decrypt($key, morv_concat("AAAA", $sealed)));
printf("[%s]\n", morv_decrypt($key, morv_encrypt($key, "")));
printf("[%s] [%s]\n", morv_encrypt(morv_substr($key, 1, 63), "x"), morv_encrypt($key, 5));
printf("%d\n", morv_strcmp(morv_encrypt($key, "x"), morv_encrypt($key, "x")) == 0);
printf("%d [%s] [%s]\n", morv_strlen(morv_random_hex(2047)), morv_random_hex(2048), morv_random_hex(0));
return 0;
}
