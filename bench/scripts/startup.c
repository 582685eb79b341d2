printf("hello\n");
