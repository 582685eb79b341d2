my $sum = 0;
for my $i (0 .. 2999999) {
    $sum = $sum + $i % 7 * 3;
    $sum = $sum ^ $i;
}
print "$sum\n";
