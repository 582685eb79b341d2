int main() { printf("never run"); return 0; }
$x = 5;
IOBJECT name { a; };
IOBJECT $ name { a; };
IOBJECT $a { b; }
int f;
function (a) { }
