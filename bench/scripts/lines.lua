io.stdout:setvbuf("no")
for i = 0, 199999 do io.write(string.format("line %d of %s\n", i, "many")) end
