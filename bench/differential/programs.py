"""Random programs over all that the evaluator does: a few names, expressions of every kind, statements of every kind,
local functions and handles. Many of them fail somewhere, which is meant: messages and their order are compared too."""

NAMES = ["a", "b", "c", "x", "y", "s", "t", "f", "k"]
FIELDS = ["p", "q", "r"]
FUNCTIONS = """
function y = one(x)
y = x + 1;
end
function [p, q] = two(x, y)
p = x * 2;
q = y;
end
function r = deep(n)
if n > 0
  r = deep(n - 1) + 1;
else
  r = 0;
end
end
function none(x)
disp(x)
end
function r = early(n)
r = 0;
for k = 1:5
  if k > n
    return
  end
  while k > 10
    return
  end
  r = r + k;
end
end
function s = change(s, v)
s.p = v;
s.n.q = v;
end
function x = put(x, k, v)
x(k) = v;
x(end + 1) = v;
end
function [x, s] = together(x, s)
x = put(x, 1, 7);
s = change(s, x);
[x, s.q] = turned(x, 2);
x = put(x, 1, numel(x));
end
function [x, y] = turned(x, k)
x(k) = -x(k);
y = x;
y(1) = 5;
end
function t = spelled(n)
t = '';
for k = 1:n
  t = [t, char(96 + k)];
end
end
function p = pair(a, b)
p.x = a;
p.y = b;
end
"""


class Maker:
    def __init__(self, source):
        self.source = source
        self.loops = 0

    def pick(self, *choices):
        return self.source.choice(choices)

    def name(self):
        return self.source.choice(NAMES)

    def number(self):
        return self.pick("0", "1", "2", "3", "4", "-1", "0.5", "1e3", "2.5", "7")

    def subscript(self, depth):
        return self.pick("1", "2", "3", "end", ":", "end - 1", "[1 2]", "2:3", "1:end", "1:2:end", "end:-1:1",
                         "k:end", "k", "[true false true]", "0", "1.5", self.expression(depth - 1))

    def arguments(self, depth):
        return ", ".join(self.subscript(depth) for _ in range(self.pick(1, 1, 1, 2, 2, 3)))

    def values(self, depth):
        return ", ".join(self.expression(depth - 1) for _ in range(self.pick(1, 1, 2)))

    def chain(self, depth):
        text = self.pick("s", "s", "s", "t", "a")
        if self.source.random() < 0.3:
            text += f"({self.subscript(depth)})"
        for _ in range(self.pick(1, 1, 1, 2, 3)):
            text += self.pick("." + self.source.choice(FIELDS), "." + self.source.choice(FIELDS),
                              f".({self.pick(chr(39) + 'p' + chr(39), chr(39) + 'q' + chr(39), self.name())})")
            if self.source.random() < 0.25:
                text += f"({self.subscript(depth)})"
        return text

    def leaf(self):
        return self.pick(self.number(), self.number(), self.name(), self.name(), self.name(), "'ab'", "'x'", "''", "[]",
                         "true", "false", "2i", "pi", "1:3", "[1 2 3]", "[1 2; 3 4]", "NaN", "i", "zeros(2, 3)")

    def expression(self, depth):
        if depth <= 0:
            return self.leaf()
        e = lambda: self.expression(depth - 1)
        kind = self.source.randrange(26)
        if kind < 8:
            op = self.pick("+", "-", "*", ".*", "/", "./", "^", ".^", "==", "~=", "<", "<=", ">", ">=", "&", "|", "&&",
                           "||", "\\", ".\\", "+", "-", "*")
            return f"{e()} {op} {e()}"
        if kind < 9:
            return f"({e()})"
        if kind < 10:
            return f"{self.pick('-', '~', '+')}{e()}"
        if kind < 11:
            return self.pick(f"({e()})'", f"{self.name()}' * {e()}", f"{e()} * {self.name()}'")
        if kind < 14:
            return f"{self.name()}({self.arguments(depth)})"
        if kind < 15:
            return f"[{', '.join(e() for _ in range(self.pick(1, 2, 3)))}]"
        if kind < 16:
            return f"[{e()}, {e()}; {e()}, {e()}]"
        if kind < 18:
            return self.chain(depth)
        if kind < 19:
            return f"{self.pick('1', '3', e())}:{self.pick('4', '6', e())}"
        if kind < 20:
            return f"{self.pick('1', e())}:{self.pick('2', '-1', e())}:{self.pick('5', e())}"
        if kind < 22:
            return self.pick(f"abs({e()})", f"mod({e()}, 3)", f"floor({e()})", f"max({e()}, 2)", f"min({e()}, {e()})",
                             f"sqrt({e()})", f"size({e()})", f"numel({e()})", f"sum({e()})", f"strcmp({e()}, 'ab')",
                             f"rem({e()}, {e()})", f"round({e()})", f"isempty({e()})", f"int2str({e()})", "nargin",
                             f"length({e()})", f"reshape({e()}, 1, {self.number()})", f"fix({e()})",
                             f"ceil({e()})", f"repmat({e()}, 1, 2)")
        if kind < 24 and self.source.random() < 0.4:
            return self.pick(f"put({e()}, {self.number()}, {e()})", f"change({self.name()}, {e()})", f"together({e()}, {self.name()})",
                             f"turned({e()}, 2)", f"spelled({self.number()})", f"pair({e()}, {e()})", f"upper({e()})", f"lower({e()})",
                             f"strcmpi({e()}, 'AB')", f"isfield({self.name()}, 'p')", f"isfield({e()}, {e()})", f"ischar({e()})",
                             f"isstruct({e()})", f"zeros({self.number()}, {e()})", f"ones({e()}, 2)", f"size({e()}, {self.number()})",
                             f"xor({e()}, {e()})", f"double({e()})", f"char({e()})", f"numel({e()}) * 2", f"max(numel({e()}), {e()})")
        if kind < 24:
            return self.pick(f"one({e()})", f"two({e()}, {e()})", f"deep({self.number()})", f"one()", f"early({e()})",
                             f"none({e()})", f"f({self.values(depth)})", "f()", f"two({e()})")
        if kind < 25:
            return self.pick("@(x) x + k", f"@(x) {e()}", f"@() {e()}", "@sin", "@one", f"@{self.name()}",
                             f"@(x, y) {e()}")
        return self.leaf()

    def end(self):
        return self.pick(";", ";", ";", "", ",")

    def assignment(self):
        value = self.expression(self.pick(0, 1, 1, 2, 2, 3))
        kind = self.source.randrange(12)
        if kind < 5:
            return f"{self.name()} = {value}"
        if kind < 8:
            return f"{self.name()}({self.arguments(1)}) = {self.pick(value, value, value, '[]')}"
        if kind < 10:
            return f"{self.chain(1)} = {value}"
        if kind < 11 and self.source.random() < 0.5:
            x, s = self.name(), self.pick("s", "s", self.name())
            return self.pick(f"{x} = put({x}, {self.number()}, {value})", f"{s} = change({s}, {value})", f"[{x}, {s}] = together({x}, {s})",
                             f"[{x}, {s}] = turned({x}, {s})", f"t = [t, {value}]", f"{x} = [{x}, {value}]", "s(end + 1) = s(1)",
                             f"s(end + 1).p = {value}", f"s(2) = {self.name()}", f"{x} = {x}(2:3)", f"{s} = {s}(end)", f"s = pair({x}, {s})",
                             f"{x} = strcat({x}, {value})", f"s.(t) = {value}", f"s.(['n' int2str(k)]) = {value}")
        if kind < 11:
            return f"[{self.name()}, {self.name()}] = {self.pick('two(1, 2)', 'two(a, b)', 'size(x)', 'max(x)', value)}"
        return f"f = {self.pick('@(x) x * 2', '@(x, y) x + y', '@abs', '@one', '@(x) x(end)', '@() k', '@(x) f2(x)')}"

    def statement(self, depth, indent):
        pad = "  " * indent
        kind = self.source.randrange(20)
        if kind < 10 or depth <= 0:
            return f"{pad}{self.assignment()}{self.end()}\n"
        if kind < 12:
            return f"{pad}{self.expression(2)}{self.end()}\n"
        if kind < 14:
            body = self.block(depth - 1, indent + 1)
            return f"{pad}for {self.pick('k', 'k', self.name())} = {self.pick('1:3', '1:3', '[4 5 6]', self.expression(1))}\n{body}{pad}end\n" \
                if self.loops < 3 else f"{pad}k = 2;\n"
        if kind < 16:
            text = f"{pad}if {self.expression(2)}\n{self.block(depth - 1, indent + 1)}"
            if self.source.random() < 0.3:
                text += f"{pad}elseif {self.expression(1)}\n{self.block(depth - 1, indent + 1)}"
            if self.source.random() < 0.5:
                text += f"{pad}else\n{self.block(depth - 1, indent + 1)}"
            return text + f"{pad}end\n"
        if kind < 17:
            text = f"{pad}switch {self.pick(self.name(), self.expression(1))}\n"
            for _ in range(self.pick(1, 2, 3)):
                case = self.pick("1", "2", "'ab'", "'x'", self.expression(1))
                text += f"{pad}case {case}\n{self.pick('', self.block(depth - 1, indent + 1))}"
            if self.source.random() < 0.5:
                text += f"{pad}otherwise\n{self.block(depth - 1, indent + 1)}"
            return text + f"{pad}end\n"
        if kind < 18:
            self.loops += 1
            counter = f"w{self.loops}"
            body = self.block(depth - 1, indent + 1)
            return f"{pad}{counter} = 0;\n{pad}while {counter} < 3\n{pad}  {counter} = {counter} + 1;\n{body}{pad}end\n"
        return pad + self.pick("break\n", "continue\n", "return\n", f"disp({self.expression(1)})\n", "who\n",
                               "clear('a')\n", f"{self.name()}\n", f"none({self.name()});\n", "x(end + 1) = k;\n")

    def block(self, depth, indent):
        return "".join(self.statement(depth, indent) for _ in range(self.pick(1, 1, 2, 3)))


def program(source):
    """One program, with variables of several kinds to begin with."""
    maker = Maker(source)
    start = "a = 2; b = [1 2 3]; x = [1 2; 3 4]; t = 'text'; y = 1 + 2i; k = 1; f = @(x) x + 1; c = true;\n"
    if source.random() < 0.7:
        start += "s.p = 1; s.q = [4 5 6]; s.r.p = 'in';\n"
    elif source.random() < 0.5:
        start += "s(2).p = 5; s(1).p = 'one';\n"
    return start + "".join(maker.statement(3, 0) for _ in range(source.choice([1, 2, 3, 5, 8]))) + FUNCTIONS
