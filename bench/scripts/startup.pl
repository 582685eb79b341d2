print "hello\n";
