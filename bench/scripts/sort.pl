my ($n, @words) = (12345);
for my $i (0 .. 99999) {
    $n = ($n * 75 + 74) % 65537;
    push @words, "word $n $i";
}
@words = sort @words;
print "$words[0] $words[99999]\n";
