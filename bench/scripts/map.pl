my (%ages, $total);
$ages{"key$_"} = "$_" for 0 .. 99999;
$total += $ages{"key$_"} % 10 for 0 .. 99999;
print scalar(keys %ages), " $total\n";
