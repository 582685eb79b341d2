#!/usr/bin/env python3
"""What a script prints until an error ends it, on both roads of the interpreter: runtime_errors_test.py path/to/vorc"""

import os
import sys

import program

# What stands in front of main, main's statements from line 3 on, and what is printed.
CASES = [
    ("", '$s = "nop"; _asm("nop"); _asm($s);\nprintf("%d", _asm("mov"));\n_asm(5);',
     "0\n<s.c(5)>: Error 0: Argument of function _asm must be a character string"),
    ("", 'printf("%d [%s]", morv_strlen(5), morv_upper(5));\nprintf("%d", morv_strlen("a", "b"));',
     "0 []\n<s.c(4)>: Error 0: Wrong number of arguments passed in function 'morv_strlen'."),
    ("int add(int a, int b) { return a + b; } int (*f)(int, int);",
     'f = add; printf("%d", f(1, 2)); f = 0;\nprintf("%d", f(1, 2));', "3\n<s.c(4)>: Error 0: Undefined function 'f'."),
    ("int promised(int a); int morv_strlen(char *s);", 'printf("%d", morv_strlen("built in"));\nprintf("%d", promised(1));',
     "8\n<s.c(4)>: Error 0: Undefined function 'promised'."),

    # Divisions by zero, wherever they stand.
    ("int g; int share(int a, int b) { g = 1; return a / b; }",
     'int i;\nfor (i = 2; i >= 0; i--) { g = 0; printf("%d", share(8, i)); }', "4\n8\n<s.c(1)>: Error 0: Division by zero"),
    ("", 'int i; int a[2]; a[0] = 3; a[1] = 0;\nfor (i = 0; 6 / a[i]; i++)\nprintf("turn %d", i);',
     "turn 0\n<s.c(4)>: Error 0: Division by zero"),
    ("int inner(int a) { return 1 / a; }\nint outer(int a) { printf(\"outer %d\", a); return a; }",
     'printf("%d %d", outer(1), outer(2));\nprintf("%d %d %d",\nouter(3),\nouter(inner(0)),\nouter(4));',
     "outer 1\nouter 2\n1 2\nouter 3\n<s.c(1)>: Error 0: Division by zero"),
    ("", 'int i; int n; n = 0;\nwhile (n < 5) {\nn++;\ni = 10 % (3 - n);\nprintf("%d", i); }',
     "0\n0\n<s.c(6)>: Error 0: Division by zero"),
    ("", '$a = 8; $b = 0; printf("%d", $b / $a);\n$a %= $b;', "0\n<s.c(4)>: Error 0: Division by zero"),

    # Members.
    ("class C { public: int v; }; class C c;", 'printf("start");\nc.v(1);',
     "start\n<s.c(4)>: Error 0: Member 'v' is not a function"),
    ("class C { private: int secret; int hidden(void) { return secret; } public: int open(void) { return hidden() + 1; }"
     "friend int helper(int n); }; class C c; int helper(int n) { c.secret = n; return c.secret + c.hidden(); }",
     'printf("%d %d", helper(4), c.open());\nprintf("%d", c.hidden());',
     "8 5\n<s.c(4)>: Error 0: 'hidden' cannot access private member of struct/class/union 'C'"),
    ("class Base { protected: int kept; public: int set(void) { kept = 4; return kept; } };"
     "class Derived : public Base { public: int read(void) { return kept + 1; } }; class Derived d;",
     'd.set(); printf("%d", d.read());\nprintf("%d", d.kept);',
     "5\n<s.c(4)>: Error 0: 'kept' cannot access protected member of struct/class/union 'Derived'"),
    ("class A { public: int x; }; struct Open : A { }; class Shut : A { }; struct Open o; class Shut s;",
     'o.x = 1; printf("%d", o.x);\ns.x = 2;', "1\n<s.c(4)>: Error 0: 'x' cannot access private member of struct/class/union 'Shut'"),
    ("int plain;", 'printf("start");\nplain.x = 1;', "start\n<s.c(4)>: Error 0: 'plain' is not a struct/class/union."),
    ("struct S { int x; }; struct S s;", 's.x = 1; printf("%d", s.x);\ns.y = 2;',
     "1\n<s.c(4)>: Error 0: 'y' is not a member of struct/class/union 'S'"),

    ("struct S { int x; }; int f(void) { return 1; }",
     'struct S *p[2]; struct S s; p[1] = &s; p[1].x = 3; printf("%d", s.x);\nf().x = 1;',
     "3\n<s.c(4)>: Error 0: Invalid expression"),

    # Pointers that lead nowhere.
    ("class C { public: int v; int get(void) { return v; } }; class C c; class C *p;",
     'p = &c; c.v = 5; printf("%d", p->get()); p = 0;\nprintf("%d", p->get());',
     "5\n<s.c(4)>: Error 0: Unhandled Exception: 'p' has a value of 0x00000000 at line 4"),
    ("struct N { int v; struct N *next; }; struct N a;",
     'struct N *p; a.v = 3; a.next = 0; p = &a; printf("%d", p->v);\np = p->next; if (!p) printf("end of the list");\np->v = 4;',
     "3\nend of the list\n<s.c(5)>: Error 0: Unhandled Exception: 'p' has a value of 0x00000000 at line 5"),
    ("char *gone; int put(char *s, int n) { s[n] = 'x'; return n; }",
     'char b[4]; printf("%d", put(b, 1));\nprintf("%d", put(gone, 2));',
     "1\n<s.c(1)>: Error 0: Unhandled Exception: 's' has a value of 0x00000000 at line 1"),
    ("", 'int *p; int x; x = 1; p = &x; printf("%d", *p); p = 4660;\nprintf("%d", p[0]);',
     "1\n<s.c(4)>: Error 0: Unhandled Exception: 'p' has a value of 0x00001234 at line 4"),
    ("", 'printf("start");\nreturn *5;', "start\n<s.c(4)>: Error 0: Improper use of '*' in the expression."),
    ("", 'int x; int *p; x = 3; p = &x; printf("%d", *p);\nprintf("%d", **p);',
     "3\n<s.c(4)>: Error 0: Illegal indirection '*'."),
    ("", 'int a[2]; int x; x = 1; x++; ++x; printf("%d", x);\na++;',
     "3\n<s.c(4)>: Error 0: Address Constant cannot be changed."),
    ("", 'int x; int *p; p = &x; (x) = 3; (*p) += 2; printf("%d", x);\n(*p)++;',
     "5\n<s.c(4)>: Error 0: Invalid operation on a constant number"),
    ("", 'int a[2]; a[1] = 3; printf("%d", -a[1]);\nprintf("%d", -a);',
     "3\n<s.c(4)>: Error 0: Address Constant cannot be changed."),

    # The stack.
    ('int room(int n) { char big[30000]; big[0] = n; printf("room %d", n); return room(n + 1); }', "room(1);",
     "room 1\nroom 2\n<s.c(1)>: Error 0: The script's stack of 65536 words is used up in function 'room'."),
    ("", "int big[20000]; big[0] = 1;",
     "<s.c(2)>: Error 0: The script's stack of 65536 words is used up in function 'main'."),
]
EXCEPTION = "Unhandled Exception: "


def main():
    vorc = os.path.abspath(sys.argv[1])
    results = []
    for declared, body, printed in CASES:
        # What reads or writes through such a pointer is told on standard error as well.
        told = f"MorvScript Interpreter: {printed[printed.index(EXCEPTION):]}\n" if EXCEPTION in printed else ""
        for road in ([], ["VORC_WALK=1"]):
            with program.Folder() as folder:
                folder.write("s.c", f'{declared}\nint main() {{\n{body}\nprintf("never"); return 0; }}\n')
                run = program.run(["env", *road, vorc, "-morv", "-morvquiet", "s.c"], folder.path)
            results.append((run.status, run.output.decode(), run.errors.decode()) == (1, printed + "\n", told))
            if not results[-1]:
                print(f"FAIL {' '.join(road)} {declared} {body}\n  status {run.status}")
                program.show_difference((printed + "\n" + told).encode(), run.output + run.errors)
    return program.close(results)


if __name__ == "__main__":
    sys.exit(main())
