int main()
{
printf("[%s]\n", morv_re("[b-d]+", "abcde"));
printf("[%s]\n", morv_re("[^b-d]+", "bcead"));
printf("[%s]\n", morv_re("[a-]+", "xa-a"));
printf("[%s]\n", morv_re("[]a]", "]a"));
printf("[%s]\n", morv_re("[^]", "q"));
printf("[%s]\n", morv_re("[z-a]", "amz"));
printf("[%s]\n", morv_re("[\\d.]+", "v1.25b"));
printf("[%s]\n", morv_re("[^\\s]+", "  word next"));
printf("[%s]\n", morv_re("[ab", "cb"));
printf("[%s]\n", morv_re("\\d\\D\\w\\W\\s\\S", "-1x_- z-"));
printf("[%s]\n", morv_re("[\\]x]+", "a]x"));
return 0;
}
