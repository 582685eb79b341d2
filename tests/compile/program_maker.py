"""Makes well-defined random programs. Every expression carries the range of its value, so that no signed number
overflows: where a range gets too wide, operands are masked or reduced."""

from dataclasses import dataclass, field


@dataclass(frozen=True)
class Type:
    name: str
    bits: int
    signed: bool

    @property
    def low(self):
        return -(1 << (self.bits - 1)) if self.signed else 0

    @property
    def high(self):
        return (1 << (self.bits - self.signed)) - 1

    def holds(self, low, high):
        return self.low <= low and high <= self.high


INT = Type("int", 32, True)
UINT = Type("unsigned int", 32, False)
LONG = Type("INT64", 64, True)
ULONG = Type("UINT64", 64, False)
FIELDS = [Type("unsigned int", 5, False), Type("unsigned int", 11, False)]   # of bits
NARROW = [Type("char", 8, True), Type("UCHAR", 8, False), Type("short", 16, True), Type("UINT16", 16, False)]


@dataclass(frozen=True)
class Expression:
    text: str
    type: Type      # after promotion
    low: int
    high: int


@dataclass
class Variable:
    text: str       # how it is read and written
    type: Type
    low: int        # what is assigned stays in these bounds
    high: int


@dataclass
class Function:
    name: str
    result: Type
    parameters: list
    cost: int = 0


@dataclass
class Scope:
    """What a function body may use."""
    variables: list = field(default_factory=list)   # may be assigned
    readable: list = field(default_factory=list)    # loop counters and the like
    arrays: list = field(default_factory=list)      # (name, element type, dimensions)
    lines: list = field(default_factory=list)
    names: int = 0
    repeats: int = 1                                # how often the statement at hand may run
    loops: int = 0
    cost: int = 0


def promote(type_):
    return INT if type_.bits < 32 else type_


def common(a, b):
    if a == b:
        return a
    wide = max(a.bits, b.bits)
    signed = all(t.signed or t.bits < wide for t in (a, b))
    return next(t for t in (INT, UINT, LONG, ULONG) if t.bits == wide and t.signed == signed)


def mask_of(low, high):
    """The numbers of as many bits as the bounds need: what & | ^ of such numbers stay in."""
    bits = max(low.bit_length() if low >= 0 else (~low).bit_length(), high.bit_length() if high >= 0 else 0)
    return (-(1 << bits) if low < 0 else 0), (1 << bits) - 1


class Program:
    def __init__(self, rng, prefix, level, calls=True, wide=True):
        self.rng, self.prefix, self.level = rng, prefix, level
        self.wide = wide and level >= 3
        self.functions = []
        self.parts = [f"enum {{ {prefix}LOW = -3, {prefix}NEXT }};"]
        self.globals = Scope()
        self.calls = []
        if level >= 2:
            self.make_globals()
        if level >= 2 and calls:
            for number in range(rng.randint(1, 3)):
                self.make_function(f"{prefix}f{number}", pure=True)
        for number in range(rng.randint(1, 2)):
            self.make_function(f"{prefix}run{number}", pure=False)
        self.source = "\n".join(self.parts) + "\n"

    # Types and numbers

    def pick_type(self):
        if self.level < 3 or self.rng.random() < 0.4:
            return INT
        return self.rng.choice([INT, UINT, *NARROW] + ([LONG, ULONG] if self.wide else []))

    def constant(self, type_=None):
        rng = self.rng
        value = rng.choice([rng.randint(0, 9), rng.randint(-20, 20), rng.randint(-1000, 1000), rng.randint(0, 70000)])
        if self.wide and rng.random() < 0.05:
            value = rng.randint(1 << 33, 1 << 40)
        if type_ is not None:
            value = max(type_.low, min(type_.high, value))
        literal = str(value) if value >= 0 else f"(-{-value})"
        return Expression(literal, INT if INT.holds(value, value) else LONG, value, value)

    # Expressions

    def variable_expression(self, variable):
        return Expression(variable.text, promote(variable.type), variable.low, variable.high)

    def leaf(self, scope):
        rng = self.rng
        choices = scope.variables + scope.readable + self.globals.variables + self.globals.readable
        if choices and rng.random() < 0.7:
            return self.variable_expression(rng.choice(choices))
        if scope.arrays and rng.random() < 0.6:
            return self.variable_expression(self.element(scope, 1))
        if self.level >= 3 and rng.random() < 0.2:
            return Expression(*rng.choice([(f"{self.prefix}LOW", INT, -3, -3), (f"{self.prefix}NEXT", INT, -2, -2)]))
        return self.constant()

    def element(self, scope, depth):
        name, type_, dimensions = self.rng.choice(scope.arrays)
        indices = "".join(f"[{self.index(scope, size, depth)}]" for size in dimensions)
        return Variable(name + indices, type_, type_.low, type_.high)

    def index(self, scope, size, depth):
        if self.rng.random() < 0.4:
            return str(self.rng.randrange(size))
        return self.fit(self.expression(scope, depth - 1), 0, size - 1).text

    def fit(self, e, low, high):
        """The expression, reduced so that it stays in the bounds; zero lies in them."""
        if low <= e.low and e.high <= high:
            return e
        if low >= 0 or (not e.type.signed and high >= 0):
            mask = (1 << ((high + 1).bit_length() - 1)) - 1
            return Expression(f"({e.text} & {mask})", e.type, 0, mask)
        bound = min(-low, high)
        return Expression(f"({e.text} % {bound + 1})", e.type, -bound, bound)

    def expression(self, scope, depth):
        rng = self.rng
        if depth <= 0:
            return self.leaf(scope)
        kind = rng.random()
        if kind < 0.5:
            return self.arithmetic(scope, depth)
        if kind < 0.6:
            return self.bitwise(scope, depth)
        if kind < 0.66:
            return self.shift(scope, depth)
        if kind < 0.74:
            return self.comparison(scope, depth)
        if kind < 0.79:
            return self.logical(scope, depth)
        if kind < 0.84:
            return self.ternary(scope, depth)
        if kind < 0.9:
            return self.unary(scope, depth)
        if kind < 0.95 and self.level >= 3:
            return self.cast(scope, depth)
        return self.call(scope, depth) or self.leaf(scope)

    def pair(self, scope, depth):
        """Two operands and their common type. A negative number meets an unsigned one at level 4 only."""
        a = self.expression(scope, depth - 1)
        b = self.expression(scope, depth - self.rng.randint(1, 2))
        type_ = common(a.type, b.type)
        if not type_.signed and self.level < 4:
            a, b = (self.fit(e, 0, 0x7fffffff) if e.low < 0 else e for e in (a, b))
        return a, b, common(a.type, b.type)

    def operand_range(self, e, type_):
        return (e.low, e.high) if type_.holds(e.low, e.high) else (type_.low, type_.high)

    def arithmetic(self, scope, depth):
        op = self.rng.choice(["+", "+", "-", "-", "*", "*", "/", "%"])
        if op in "/%":
            return self.division(scope, depth, op)
        a, b, type_ = self.pair(scope, depth)
        if type_.signed:
            root = (1 << (type_.bits // 2 - 1)) - 1
            bound = root if op == "*" else (1 << (type_.bits - 2)) - 1
            a, b = self.fit(a, -bound, bound), self.fit(b, -bound, bound)
        text = f"({a.text} {op} {b.text})"
        if op == "+":
            low, high = a.low + b.low, a.high + b.high
        elif op == "-":
            low, high = a.low - b.high, a.high - b.low
        else:
            products = [x * y for x in (a.low, a.high) for y in (b.low, b.high)]
            low, high = min(products), max(products)
        if not type_.holds(low, high):
            low, high = type_.low, type_.high
        return Expression(text, type_, low, high)

    def division(self, scope, depth, op):
        a = self.expression(scope, depth - 1)
        if self.rng.random() < 0.5:
            value = self.rng.choice([2, 3, 7, 10, 100, -2, -3, -9] if a.type.signed else [2, 3, 7, 10, 1000])
            divisor = Expression(str(value) if value > 0 else f"(-{-value})", INT, value, value)
        else:
            e = self.fit(self.expression(scope, depth - 2), 0, 15)
            divisor = Expression(f"({e.text} + 1)", e.type, 1, 16)
        type_ = common(a.type, divisor.type)
        if not type_.signed and a.low < 0:
            a = self.fit(a, 0, 0x7fffffff)
        low, high = self.operand_range(a, type_)
        size = max(abs(low), abs(high)) if op == "/" else max(abs(divisor.low), abs(divisor.high)) - 1
        if op == "/" and divisor.low < 0:
            low = -size
        elif op == "%" or low < 0:
            low = -size if low < 0 else 0
        return Expression(f"({a.text} {op} {divisor.text})", type_, low, min(size, type_.high))

    def bitwise(self, scope, depth):
        a, b, type_ = self.pair(scope, depth)
        op = self.rng.choice("&|^")
        bounds = [self.operand_range(e, type_) for e in (a, b)]
        low, high = mask_of(min(low for low, _ in bounds), max(high for _, high in bounds))
        return Expression(f"({a.text} {op} {b.text})", type_, max(low, type_.low), min(high, type_.high))

    def shift(self, scope, depth):
        a = self.expression(scope, depth - 1)
        count = str(self.rng.randint(0, 7))
        if self.rng.random() < 0.4:
            count = self.fit(self.expression(scope, depth - 2), 0, 7).text
        if self.rng.random() < 0.5:
            return Expression(f"({a.text} >> {count})", a.type, min(a.low, 0), max(a.high, 0))
        if a.type.signed:
            a = self.fit(a, 0, 0xffff)
        return Expression(f"({a.text} << {count})", a.type, 0, min(a.high << 7, a.type.high) if a.type.signed else a.type.high)

    def comparison(self, scope, depth):
        a, b, _ = self.pair(scope, depth)
        op = self.rng.choice(["<", ">", "<=", ">=", "==", "!="])
        return Expression(f"({a.text} {op} {b.text})", INT, 0, 1)

    def logical(self, scope, depth):
        a, b = self.expression(scope, depth - 1), self.expression(scope, depth - 1)
        return Expression(f"({a.text} {self.rng.choice(['&&', '||'])} {b.text})", INT, 0, 1)

    def ternary(self, scope, depth):
        condition = self.comparison(scope, depth - 1) if self.rng.random() < 0.7 else self.leaf(scope)
        a, b, type_ = self.pair(scope, depth)
        bounds = [self.operand_range(e, type_) for e in (a, b)]
        return Expression(f"({condition.text} ? {a.text} : {b.text})", type_,
                          min(low for low, _ in bounds), max(high for _, high in bounds))

    def unary(self, scope, depth):
        e = self.expression(scope, depth - 1)
        op = self.rng.choice("-~!")
        if op == "!":
            return Expression(f"(!{e.text})", INT, 0, 1)
        if not e.type.signed:
            return Expression(f"({op}{e.text})", e.type, 0, e.type.high)
        if op == "~":
            return Expression(f"(~{e.text})", e.type, ~e.high, ~e.low)
        e = self.fit(e, -e.type.high, e.type.high)
        return Expression(f"(-{e.text})", e.type, -e.high, -e.low)

    def cast(self, scope, depth):
        type_ = self.pick_type()
        e = self.expression(scope, depth - 1)
        low, high = self.operand_range(e, type_)
        return Expression(f"(({type_.name})({e.text}))", promote(type_), low, high)

    def call(self, scope, depth):
        """A call, None if there is nothing to call or it would run too long."""
        if not self.functions:
            return None
        function = self.rng.choice(self.functions)
        cost = scope.repeats * function.cost
        if scope.cost + cost > 20000:
            return None
        scope.cost += cost
        arguments = ", ".join(self.expression(scope, depth - 2).text for _ in function.parameters)
        return Expression(f"{function.name}({arguments})", promote(function.result), function.result.low, function.result.high)

    # Statements

    def name(self, scope, stem):
        scope.names += 1
        return f"{stem}{scope.names}"

    def declare(self, scope, indent, type_=None):
        type_ = type_ or self.pick_type()
        name = self.name(scope, "v")
        bound = self.rng.choice([100, 10000, 1000000, None])
        variable = Variable(name, type_, type_.low, type_.high)
        if type_ in (INT, LONG) and bound:
            variable = Variable(name, type_, -bound, bound)
        start = self.constant(Type("", min(type_.bits, 7) if type_.signed else 7, type_.signed))
        if self.rng.random() < 0.5:
            scope.lines.append(f"{indent}{type_.name} {name} = {start.text};")
        else:
            scope.lines += [f"{indent}{type_.name} {name};", f"{indent}{name} = {start.text};"]
        scope.variables.append(variable)
        return variable

    def place(self, scope):
        """Something that may be assigned."""
        if scope.arrays and self.rng.random() < 0.3:
            return self.element(scope, 2)
        return self.rng.choice(scope.variables)

    def assign(self, scope, indent):
        variable = self.place(scope)
        e = self.expression(scope, self.rng.randint(1, 4))
        if not variable.type.holds(variable.low - 1, variable.high + 1) and variable.high == variable.type.high:
            pass    # takes anything, cut to its width
        else:
            e = self.fit(e, variable.low, variable.high)
        scope.lines.append(f"{indent}{variable.text} = {e.text};")

    def wraps(self, variable):
        return variable.low == variable.type.low and variable.high == variable.type.high and \
            (variable.type.bits < 32 or not variable.type.signed)

    def compound(self, scope, indent):
        variable = self.place(scope)
        if self.wraps(variable):
            op = self.rng.choice(["+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<<=", ">>="])
        else:
            op = self.rng.choice(["/=", "%=", "&=", ">>="])
        if op in ("/=", "%="):
            right = str(self.rng.choice([2, 3, 7, 10]))
        elif op in ("<<=", ">>="):
            right = str(self.rng.randint(0, 7))
            if op == "<<=" and variable.type.signed:
                op = ">>="
        elif op == "&=" and not self.wraps(variable):
            right = self.fit(self.expression(scope, 2), 0, 0xff).text
        else:
            right = self.fit(self.expression(scope, 2), 0 if not variable.type.signed else -30000, 30000).text
        scope.lines.append(f"{indent}{variable.text} {op} {right};")

    def step(self, scope, indent):
        choices = [variable for variable in scope.variables if self.wraps(variable)]
        if not choices:
            return self.assign(scope, indent)
        variable = self.rng.choice(choices)
        op = self.rng.choice(["++", "--"])
        text = self.rng.choice([f"{variable.text}{op}", f"{op}{variable.text}"])
        others = [other for other in scope.variables if other is not variable and other.text.isidentifier()
                  and other.low <= variable.low and variable.high <= other.high]
        if others and variable.text.isidentifier() and self.rng.random() < 0.5:
            text = f"{self.rng.choice(others).text} = {text}"
        scope.lines.append(f"{indent}{text};")

    def condition(self, scope):
        return self.expression(scope, self.rng.randint(1, 3)).text

    def body(self, scope, indent, budget, in_loop):
        known, readable = len(scope.variables), len(scope.readable)
        for _ in range(self.rng.randint(1, 3)):
            self.statement(scope, indent, budget - 1, in_loop)
        del scope.variables[known:]
        del scope.readable[readable:]

    def branch(self, scope, indent, budget, in_loop):
        lines = scope.lines
        lines.append(f"{indent}if ({self.condition(scope)}) {{")
        self.body(scope, indent + "  ", budget, in_loop)
        if self.rng.random() < 0.6:
            lines.append(f"{indent}}} else {{")
            self.body(scope, indent + "  ", budget, in_loop)
        lines.append(f"{indent}}}")

    def loop(self, scope, indent, budget):
        if scope.loops >= 2:
            return self.assign(scope, indent)
        counter = self.name(scope, "i")
        turns = self.rng.randint(1, 5)
        kind = self.rng.choice(["for", "for", "while", "do"])
        lines = scope.lines
        lines.append(f"{indent}int {counter};")
        if kind == "for":
            head = self.rng.choice([f"{counter} = 0; {counter} < {turns}; {counter}++",
                                    f"{counter} = {turns}; {counter} > 0; {counter}--",
                                    f"{counter} = 0; {counter} < {turns * 2}; {counter} += 2"])
            lines.append(f"{indent}for ({head}) {{")
        else:
            lines.append(f"{indent}{counter} = {turns};")
            lines.append(f"{indent}while ({counter} > 0) {{" if kind == "while" else f"{indent}do {{")
            lines.append(f"{indent}  {counter}--;")
        scope.readable.append(Variable(counter, INT, 0, 10))
        scope.loops += 1
        scope.repeats *= turns
        self.body(scope, indent + "  ", budget, True)
        scope.repeats //= turns
        scope.loops -= 1
        lines.append(f"{indent}}} while ({counter} > 0);" if kind == "do" else f"{indent}}}")

    def switch(self, scope, indent, budget):
        lines = scope.lines
        values = self.rng.sample(range(8), self.rng.randint(2, 4))
        lines.append(f"{indent}switch ({self.fit(self.expression(scope, 2), 0, 7).text}) {{")
        default_at = self.rng.randint(0, len(values) + 1)
        for position, value in enumerate(values + [None]):
            if position == default_at or (value is None and default_at == len(values)):
                lines.append(f"{indent}  default:")
                self.simple(scope, indent + "    ")
                lines.append(f"{indent}    break;")
            if value is None:
                continue
            lines.append(f"{indent}  case {value}:")
            if self.rng.random() < 0.85:
                self.simple(scope, indent + "    ")
            if self.rng.random() < 0.7 or value == values[-1]:
                lines.append(f"{indent}    break;")
        lines.append(f"{indent}}}")

    def jump_over(self, scope, indent, budget):
        label = self.name(scope, "over")
        scope.lines.append(f"{indent}if ({self.condition(scope)}) goto {label};")
        self.simple(scope, indent)
        scope.lines.append(f"{indent}{label}:")
        self.simple(scope, indent)

    def leave(self, scope, indent):
        scope.lines.append(f"{indent}if ({self.condition(scope)}) {self.rng.choice(['break', 'continue'])};")

    def simple(self, scope, indent):
        scope.cost += scope.repeats
        kind = self.rng.random()
        if kind < 0.6:
            self.assign(scope, indent)
        elif kind < 0.85:
            self.compound(scope, indent)
        else:
            self.step(scope, indent)

    def statement(self, scope, indent, budget, in_loop):
        kind = self.rng.random()
        if budget <= 0 or kind < 0.5:
            self.simple(scope, indent)
        elif kind < 0.68:
            self.branch(scope, indent, budget, in_loop)
        elif kind < 0.82:
            self.loop(scope, indent, budget)
        elif kind < 0.89:
            self.switch(scope, indent, budget)
        elif kind < 0.94 and in_loop:
            self.leave(scope, indent)
        elif indent == "  ":
            self.jump_over(scope, indent, budget)
        else:
            self.declare(scope, indent)

    # Functions and globals

    def make_globals(self):
        for _ in range(self.rng.randint(1, 3)):
            type_ = self.pick_type()
            name = self.prefix + self.name(self.globals, "g")
            start = self.constant(Type("", 7, type_.signed))
            value = f" = {start.low}" if self.rng.random() < 0.6 else ""
            self.parts.append(f"{type_.name} {name}{value};")
            self.globals.readable.append(Variable(name, type_, type_.low, type_.high))
        type_, size = self.pick_type(), self.rng.choice([4, 8])
        name = self.prefix + self.name(self.globals, "a")
        values = ", ".join(str(self.rng.randint(0, 100)) for _ in range(size))
        self.parts.append(f"{type_.name} {name}[{size}] = {{{values}}};")
        self.globals.arrays.append((name, type_, [size]))
        if self.level >= 4:
            self.parts.append(f"struct {self.prefix}S {{ char a; int b; unsigned int e : 5; unsigned int f : 11; short c[4]; UCHAR d; }};")
            self.parts.append(f"struct {self.prefix}S {self.prefix}s;")

    def make_locals(self, scope, pure):
        for _ in range(self.rng.randint(2, 5)):
            self.declare(scope, "  ")
        if self.level < 2:
            return
        if self.rng.random() < 0.7:
            self.make_array(scope)
        if not pure:
            scope.variables += self.globals.readable
            scope.arrays += self.globals.arrays
        if self.level >= 4:
            self.make_struct(scope, pure)
            self.make_pointer(scope)

    def make_array(self, scope):
        type_ = self.pick_type()
        dimensions = self.rng.choice([[4], [8], [2, 4], [4, 4], [2, 2, 4]])
        name = self.name(scope, "a")
        counters = [self.name(scope, "k") for _ in dimensions]
        scope.lines.append(f"  {type_.name} {name}{''.join(f'[{size}]' for size in dimensions)};")
        scope.lines += [f"  int {counter};" for counter in counters]
        indent = "  "
        for counter, size in zip(counters, dimensions):
            scope.lines.append(f"{indent}for ({counter} = 0; {counter} < {size}; {counter}++)")
            indent += "  "
        value = " + ".join(f"{counter} * {factor}" for counter, factor in zip(counters, (7, 3, 5)))
        scope.lines.append(f"{indent}{name}{''.join(f'[{counter}]' for counter in counters)} = {value};")
        scope.arrays.append((name, type_, dimensions))

    def make_struct(self, scope, pure):
        local = pure or self.rng.random() < 0.5
        name = self.name(scope, "s") if local else self.prefix + "s"
        if local:
            scope.lines.append(f"  struct {self.prefix}S {name};")
            scope.lines += [f"  {name}.a = 1;", f"  {name}.b = -70000;", f"  {name}.d = 200;", f"  {name}.e = 9;", f"  {name}.f = 0;"]
            scope.lines += [f"  {name}.c[{i}] = {i * 300};" for i in range(4)]
        dot = f"{name}."
        if self.rng.random() < 0.5:
            pointer = self.name(scope, "q")
            scope.lines += [f"  struct {self.prefix}S *{pointer};", f"  {pointer} = &{name};"]
            dot = f"{pointer}->"
        char, uchar, short = NARROW[0], NARROW[1], NARROW[2]
        scope.variables += [Variable(dot + "a", char, char.low, char.high), Variable(dot + "d", uchar, 0, 255),
                            *(Variable(dot + name, type_, 0, type_.high) for name, type_ in zip("ef", FIELDS)),
                            Variable(dot + "b", INT, -1000000, 1000000)]
        scope.arrays.append((dot + "c", short, [4]))

    def make_pointer(self, scope):
        targets = [variable for variable in scope.variables if variable.text.isidentifier()]
        target = self.rng.choice(targets)
        pointer = self.name(scope, "p")
        scope.lines += [f"  {target.type.name} *{pointer};", f"  {pointer} = &{target.text};"]
        scope.variables.append(Variable(f"(*{pointer})", target.type, target.low, target.high))

    def make_function(self, name, pure):
        scope = Scope()
        result = self.pick_type()
        parameters = [self.pick_type() for _ in range(self.rng.randint(1, 4))]
        for number, type_ in enumerate(parameters):
            variable = Variable(f"x{number}", type_, type_.low, type_.high)
            scope.variables.append(variable)
        self.make_locals(scope, pure)
        scope.lines.append("")
        for _ in range(self.rng.randint(3, 8)):
            self.statement(scope, "  ", 3, False)
            if pure and self.rng.random() < 0.15:
                scope.lines.append(f"  if ({self.condition(scope)}) return {self.expression(scope, 2).text};")
        scope.lines.append(f"  return {self.summary(scope, pure)};")
        head = ", ".join(f"{type_.name} x{number}" for number, type_ in enumerate(parameters))
        self.parts += [f"{result.name} {name}({head})", "{", *scope.lines, "}"]
        if pure:
            self.functions.append(Function(name, result, parameters, scope.cost + 10))
            return
        for _ in range(2):
            arguments = ", ".join(f"{self.argument(type_)}{':8' * (type_.bits == 64)}" for type_ in parameters)
            self.calls.append(f"{name}({arguments})")

    def argument(self, type_):
        value = self.rng.choice([self.rng.randint(-10, 10), self.rng.randint(-100000, 100000), 0, 1])
        return max(type_.low, min(type_.high, value))

    def summary(self, scope, pure):
        """An expression in which all variables take part."""
        if pure:
            return self.expression(scope, 3).text
        terms = [self.fit(self.variable_expression(variable), 0, 0xfff).text for variable in scope.variables]
        terms += [self.fit(self.variable_expression(self.element(scope, 0)), 0, 0xfff).text for _ in scope.arrays]
        return " + ".join(f"{term} * {factor}" for factor, term in enumerate(terms, 3))
