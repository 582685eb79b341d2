int main()
{
printf("%s\n", morv_pbkdf2("password", "73616c74", 1));
printf("%s\n", morv_pbkdf2("password", "73616C74", 4096));
printf("%s\n", morv_pbkdf2("password", "", 2));
printf("[%s] [%s]\n", morv_pbkdf2("password", "73616c74", 0), morv_pbkdf2("password", "73616c74", 10000001));
printf("[%s] [%s]\n", morv_pbkdf2("password", "7361g", 1), morv_pbkdf2("password", "73616", 1));
printf("[%s] [%s]\n", morv_pbkdf2(1, "73616c74", 1), morv_pbkdf2("password", "73616c74", "1"));
return 0;
}
