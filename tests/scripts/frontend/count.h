total = total + 1;
