my @composite = (0) x 1000001;
my $count = 0;
for my $i (2 .. 1000000) {
    next if $composite[$i];
    $count++;
    next if $i > 1000;
    for (my $j = $i * $i; $j <= 1000000; $j += $i) { $composite[$j] = 1; }
}
print "$count\n";
