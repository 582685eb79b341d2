int main()
{
printf("[%s]\n", morv_substr("abcdef", 2, 3));
printf("[%s]\n", morv_substr("abcdef", 2, 0 - 1));
printf("[%s]\n", morv_substr("abcdef", 0 - 4, 2));
printf("[%s]\n", morv_substr("abcdef", 6, 1));
printf("[%s]\n", morv_substr("abcdef", 4, 100));
printf("[%s]\n", morv_trim("\t two words \r\n"));
printf("[%s]\n", morv_trim(" "));
printf("[%s] [%s]\n", morv_upper("Mixed 1 Case"), morv_lower("Mixed 1 Case"));
return 0;
}
