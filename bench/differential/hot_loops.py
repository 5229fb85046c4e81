"""Random programs of loops over numbers, elements, characters and calls, for native code against the register code. Kinds change in
mid-loop, subscripts miss, arrays grow, are shared and erased, so that loops are left in all ways."""

NUMBERS = ["a", "b", "c", "d"]
FLAGS = ["p", "q"]
VECTORS = ["x", "y"]
FUNCTIONS = """
function r = work(n, v)
r = 0;
for h = 1:n
  r = r + v(mod(h, numel(v)) + 1) * h;
  if r > 1e6
    return
  end
end
end
function r = deep(n)
r = 0;
for h = 1:4
  r = r + h / 3;
  if n > 0 & h == 3
    r = r + deep(n - 1);
  end
end
end
function r = down(n)
if n < 1
  r = 0;
else
  r = n + down(n - 1);
end
end
function r = mixed(n)
if n > 3
  r = n > 5;
elseif n < -3
  r = sqrt(n);
else
  r = n / 2;
end
end
function r = root(v)
r = v;
for h = 1:4
  r = r - (r * r - v) / (2 * r);
end
end
function r = both(v, w)
r = root(abs(v) + 1) + down(mod(w, 5));
end
function r = steps(v)
r = 0;
while v > 1 & r < 40
  v = floor(v / 2);
  r = r + 1;
end
end
function r = even(n)
r = true;
if n > 0
  r = ~even(n - 1);
end
end
function r = some(v)
if v > 2
  r = v;
end
end
function [q, r, s] = parts(n, v)
q = floor(n / v);
r = n - q * v;
s = r > 1;
end
function [g, u] = chain(a, b)
if b < 1
  g = a;
  u = numel(g);
else
  [g, u] = chain(b, mod(a, b));
  u = u + 1;
end
end
function r = total(v)
r = 0;
for h = 1:numel(v)
  r = r + v(h) / h;
end
end
function r = among(v, n, h)
if h > numel(v)
  r = false;
elseif v(h) == n
  r = true;
else
  r = among(v, n, h + 1);
end
end
function r = corner(v)
r = v(1, 1) + v(end, end) + size(v, 1) - length(v);
end
function [c, n] = letter(v, h)
c = v(mod(h, numel(v)) + 1);
n = double(c) - 'a';
end
function v = marked(v, h)
v(h) = -h;
end
function r = called(f, n)
r = 0;
for h = 1:n
  r = r + f(h);
end
end
function [v, r] = shifted(v, h)
v = marked(v, h);
[v, r] = swapped(v, h);
end
function [v, r] = swapped(v, h)
r = v(1);
v(1) = v(h);
v(h) = r;
end
function r = permuted(v, h, n)
r = 0;
if h >= n
  r = v(1) + 2 * v(n);
  return
end
for i = h:n
  t = v(h);
  v(h) = v(i);
  v(i) = t;
  r = r + permuted(v, h + 1, n) * i;
end
end
function v = sorted(v, lo, hi)
if lo < hi
  i = lo;
  for j = lo:hi - 1
    if v(j) <= v(hi)
      [v, t] = exchanged(v, i, j);
      i = i + 1;
    end
  end
  v = exchanged(v, i, hi);
  v = sorted(v, lo, i - 1);
  v = sorted(v, i + 1, hi);
end
end
function [v, t] = exchanged(v, i, j)
t = v(i);
v(i) = v(j);
v(j) = t;
end
function [r, w] = noted(v, n)
w = v;
w(1) = n;
u = zeros(1, numel(v));
for h = 1:numel(v)
  u(h) = w(h) - v(h);
end
v = u;
v(2) = n;
r = v(1) + u(2) + w(end);
if n > 1
  [s, w] = noted(w, n - 1);
  r = r + s + w(1);
end
end
function [v, w, r] = traded(v, w, h)
r = 0;
if h > 0
  [w, v, r] = traded(v, w, h - 1);
  v(h) = w(1) + h;
  w = marked(w, 1);
  r = r + v(h);
end
end
function r = letters(t, l, h)
t(h) = 'q';
l(h) = ~l(h);
r = double(t(h)) + l(h);
if h > 1
  r = r + letters(t, l, h - 1);
end
end
function r = table(h)
t = [3 -1 4 1 5];
u = [1 2; 3 4];
r = t(mod(h, 5) + 1) + u(2, 1);
t(2) = h;
r = r + t(2) + t(end);
if h > 2
  r = r + table(h - 1) + total(u) + corner([1 2 3]);
end
end
function m = lowered(m, h, n)
m(h, n) = m(h, n) / 2;
if h > 1
  m = lowered(m, h - 1, n);
elseif n > 1
  m = lowered(m, size(m, 1), n - 1);
end
end
"""


class Maker:
    def __init__(self, source):
        self.source = source
        self.counters = 0
        self.indices = []
        self.calls = source.choice([0.02, 0.1, 0.5])  # of users' functions, among the numbers

    def pick(self, *choices):
        return self.source.choice(choices)

    def chance(self, p):
        return self.source.random() < p

    def constant(self):
        return self.pick("0", "1", "2", "3", "5", "-1", "-2", "0.5", "0.1", "7", "10", "1e3", "-0.25", "4", "8", "1e155", "1e308")

    def index(self):
        return self.source.choice(self.indices) if self.indices and self.chance(0.7) else self.pick("1", "2", "3", "min(a, 9)")

    def target(self):
        """A subscript of a write, which does not make an array huge."""
        return self.pick(self.index(), self.index(), self.index(), f"{self.index()} + 1", f"{self.index()} - 1", "end", "2", "end + 1",
                         f"mod({self.index()}, 3) + 1", "n", "end / 2", "p", "min(b, 9)")

    def subscript(self):
        return self.pick(self.index(), self.index(), self.index(), self.index(), f"{self.index()} + 1", f"{self.index()} - 1",
                         "end", "end - 1", "1", "2", f"mod({self.index()}, 3) + 1", f"numel(y)", "b", "n", "end / 2", "p",
                         "2 * " + self.index())

    def element(self):
        return self.pick(f"x({self.subscript()})", f"x({self.subscript()})", f"y({self.subscript()})", f"m({self.subscript()}, {self.subscript()})",
                         f"m({self.subscript()}, {self.subscript()})", f"l({self.subscript()})", f"t({self.subscript()})", f"g({self.subscript()})",
                         f"m({self.subscript()})", f"e({self.subscript()}, 1)", *self.fields(self.subscript))

    def fields(self, subscript):
        return ["s.u", "s.v", "s.o.w", "s.o.w", f"s.r({subscript()})", f"qs(mod({self.index()}, 3) + 1).u", f"qs({subscript()}).w"]

    def leaf(self):
        return self.pick(self.constant(), self.constant(), self.source.choice(NUMBERS), self.source.choice(NUMBERS),
                         self.source.choice(NUMBERS), self.index(), self.index(), self.element(), self.element(),
                         self.source.choice(FLAGS), "n", "k", "pi", "z", "w", "'c'", "t(2)")

    def filled(self, make, *templates):
        """One of the templates, each # in it replaced by what `make` gives."""
        text = self.source.choice(templates)
        while "#" in text:
            text = text.replace("#", make(), 1)
        return text

    def number(self, depth):
        if depth <= 0 or self.chance(0.15):
            return self.leaf()
        fill = lambda *templates: self.filled(lambda: self.number(depth - 1), *templates)
        if self.chance(self.calls):
            return fill("root(#)", "both(#, #)", "steps(#)", "mixed(#)", "down(mod(#, 6))", "even(min(#, 9))", "f(#)", "f(#)", "h(#, #)",
                        "f(k)", "h(n, k)", "root(k)", "mixed(k - 3)", "steps(n)", "table(k)", "table(numel(x))", "table(mod(round(#), 7))", "work(3, x)", "some(abs(#) + 2.5)", "total(x)", "total(m)", "total(t)", "total(l)", "among(x, #, 1)", "corner(m)",
                        "corner(e)", "permuted(x, 1, 3)", "permuted(y, 1, 4)", "noted(x, 2)", "letters(t, l, 3)", "letters(t, l, k)", "sorted(y, 1, 4)", "called(f, 3)", "called(@root, 2)", "max(numel(x), #)", "size(m, 2)", "xor(p, #)", "double(t(1))",
                        "root(#, 1)" if self.chance(0.03) else "root(2)")
        kind = self.source.randrange(20)
        if kind < 9:
            return f"{self.pick('(', '(', '-(')}" + fill("#") + f" {self.pick('+', '-', '*', '/', '+', '-', '*', '.*', './', '.' + chr(92), chr(92))} " + fill("#)")
        if kind < 11:
            return fill("(#) ^ 2", "(#) .^ 2", "(#) ^ 3", "(#) ^ 0.5", "(#) ^ -1", "(#) .^ 0", "(#) ^ #")
        if kind < 15:
            return fill("abs(#)", "floor(#)", "ceil(#)", "round(#)", "fix(#)", "sqrt(#)", "mod(#, 2)", "mod(#, 3)", "mod(#, 7)", "mod(#, 0.5)",
                        "mod(#, 0)", "mod(#, #)", "rem(#, 2)", "rem(#, 3)", "rem(#, 0)", "rem(#, #)", "max(#, #)", "min(#, #)")
        if kind < 17:
            return fill("sin(#)", "cos(#)", "exp(#)", "log(#)", "atan(#)", "tanh(#)", "asin(#)", "log10(#)", "real(#)", "imag(#)", "conj(#)",
                        "complex(#, #)", "log2(#)", "acos(#)", "cosh(#)", "sinh(#)", "tan(#)")
        if kind < 18:
            return fill("numel(x)", "length(m)", "numel(t)", "length(y)", "size(m, 1)", "isnan(#)", "eps", "Inf", "NaN", "isempty(x)")
        if kind < 19:
            return f"({self.truth(depth - 1)})"
        return self.leaf()

    def truth(self, depth):
        if depth <= 0 or self.chance(0.4):
            op = self.pick("<", "<=", ">", ">=", "==", "~=")
            return f"{self.number(depth)} {op} {self.number(depth)}"
        return self.filled(lambda: self.truth(depth - 1), "(#) & (#)", "(#) | (#)", "~(#)", "(#) && (#)", self.source.choice(FLAGS), "(#) || (#)",
                           "true", "false", f"~{self.source.choice(FLAGS)}", self.number(0), f"(t({self.index()}) == 'e')")

    def assignment(self):
        depth = self.pick(1, 1, 2, 2, 3)
        kind = self.source.randrange(40)
        if kind < 16:
            return f"{self.source.choice(NUMBERS)} = {self.number(depth)};"
        if kind < 20:
            return f"{self.source.choice(FLAGS)} = {self.truth(depth)};"
        if kind < 24:
            return f"{self.pick('x', 'x', 'y', 'm', 'g')}({self.target()}) = {self.number(depth)};"
        if kind < 27:
            return f"{self.pick(*self.fields(self.target))} = {self.number(depth)};"
        if kind < 30:
            return f"m({self.target()}, {self.target()}) = {self.number(depth)};"
        if kind < 32:
            return self.pick(f"l({self.target()}) = {self.truth(1)};", f"t({self.target()}) = {self.pick(chr(39) + 'q' + chr(39), 't(1)', 't(end)')};")
        if kind < 34:
            return f"{self.pick('z', 'w')} = {self.pick('z * w', 'z * z + w', 'z / w', 'w - z', 'z + a', 'a - w', 'complex(a, b)', '-z')};"
        if kind < 35 and self.chance(0.5):
            return self.pick("[a, b] = parts(c, 3);", "[c, d, p] = parts(a, b);", "[a] = parts(d, 2);", "[a, b] = chain(mod(floor(c), 60), k);",
                             "[s1, a] = letter(t, k);", "[s1, a] = letter(x, k);", "x = marked(x, 2);", "y = marked(x, 1);", "[x, a] = shifted(x, 2);",
                             "[y, b] = swapped(x, 3);", "t(2) = char(96 + mod(floor(abs(a)), 20));", "t(3) = upper(t(1));", "t = [t, lower(t(end))];", "s1 = upper(t(2));", "a = called(@(v) v + total(x), 2);",
                             "m = marked(m, 3);", "[q, a] = parts(b, c);", "x = sorted(x, 1, min(numel(x), 6));", "y = sorted(y, 1, 4);",
                             "[a, y] = noted(x, 3);", "[a, x] = noted(y, 2);", "[x, y, b] = traded(x, y, 2);", "[y, x, b] = traded(x, y, 3);",
                             "m = lowered(m, 2, 2);", "e = sorted(e, 1, 3);", "[m, d] = exchanged(m, 2, k);")
        if kind < 36 and self.chance(0.5):
            return self.pick("s2 = s;", "s = s2;", "s.u = true;", "s.u = 'c';", "s.v = s.u;", "s.o = s2.o;", "s.r = x;", "x = s.r;", "s.r = [1 2 3];",
                             "s.n = k;", "qs(end + 1).u = b;", "qs(2) = qs(1);", "q2 = qs;", "qs = q2(1:3);", "qs(1).w = [1 2];",
                             "qs(2).w = 3;", "s.o.w = x;", "s.o.w = 2;", "s.u = s.u + s.o.w;", "s.r(end + 1) = 7;", "a = 3;")
        if kind < 36:
            return self.pick("x(end + 1) = a;", "x(end + 1) = k;", "y = [y, b];", "t = [t, 'z'];", "y(end + 1) = 2;", "x = [x, 1];")
        if kind < 38:
            return self.pick("y = x;", "x = y;", "v = x; x(1) = a;", "x(1) = [];", "y(end) = [];", "x = x + 1;", "m = m';", "y = [1 2 3];",
                             "x = 1:6;", "x = zeros(1, 4);")
        return self.pick("a = 'c';", "b = true;", "a = [1 2];", "clear('c')", "c = n;", "d = 2i;", "a = {0};".replace("{0}", "0"), "disp(a)", "c",
                         "a = work(9, x);", "b = deep(2);", "d = numel(x);", "a = @(h) h;", "f = @(v) v - b;", "f = @(v) v + p;", "h = @(v, w) f(v) * w;", "a = some(b);", "a = down(300);", "a = 1;", "b = 2;")

    def statement(self, depth, indent):
        pad = "  " * indent
        kind = self.source.randrange(24)
        if depth <= 0 or kind < 11:
            return pad + self.assignment() + "\n"
        body = lambda: self.block(depth - 1, indent + 1)
        if kind < 15:
            text = f"{pad}if {self.truth(2)}\n{body()}"
            if self.chance(0.3):
                text += f"{pad}elseif {self.truth(1)}\n{body()}"
            if self.chance(0.5):
                text += f"{pad}else\n{body()}"
            return text + f"{pad}end\n"
        if kind < 16:
            text = f"{pad}switch {self.pick('mod(k, 3)', self.source.choice(NUMBERS), self.number(1), 't(1)')}\n"
            for case in self.source.sample(["0", "1", "2", "'t'", "a", "3"], 3):
                text += f"{pad}case {case}\n{body()}"
            if self.chance(0.5):
                text += f"{pad}otherwise\n{body()}"
            return text + f"{pad}end\n"
        if kind < 20:
            return self.loop(depth, indent)
        if kind < 22 and self.indices:
            return f"{pad}if {self.truth(1)}\n{pad}  {self.pick('break', 'continue', 'continue', 'return')}\n{pad}end\n"
        return pad + self.assignment() + "\n"

    def loop(self, depth, indent):
        pad = "  " * indent
        self.counters += 1
        if self.chance(0.4):
            counter = f"u{self.counters}"
            self.indices.append(counter)
            text = f"{pad}{counter} = 0;\n{pad}while {counter} < {self.pick('5', '8', 'n')}{self.pick('', '', ' & (' + self.truth(1) + ')', ' && a < 1e9')}\n"
            # An empty condition is true for ever.
            text += f"{pad}  {counter} = {counter} + 1;\n{pad}  if {counter} > 30\n{pad}    break\n{pad}  end\n"
            text += self.block(depth - 1, indent + 1)
        else:
            counter = self.pick("k", f"i{self.counters}", f"i{self.counters}")
            self.indices.append(counter)
            elements = self.pick("1:6", "1:8", "1:n", "0:5", "6:-1:1", "1:2:9", "0:0.5:3", "2:min(numel(x), 9)", "1:min(length(t), 9)", "x(1:min(end, 6))", "'text'", "l", "1:min(a, 9)",
                                 f"1:min({self.index()}, 9)", "max(b, -3):min(c, 9)", "n:-1:1", "e")
            text = f"{pad}for {counter} = {elements}\n" + self.block(depth - 1, indent + 1)
        self.indices.pop()
        return text + f"{pad}end\n"

    def block(self, depth, indent):
        return "".join(self.statement(depth, indent) for _ in range(self.pick(1, 2, 2, 3, 4)))


def program(source):
    maker = Maker(source)
    start = ("a = 2; b = 0.5; c = -3; d = 10; k = 1; p = true; q = false; x = [3 1 4 1 5 9]; y = [2 7 1 8]; n = length(x);\n"
             "m = [1 2 3; 4 5 6; 7 8 10]; l = [true false true false]; t = 'some text'; z = 1 + 2i; w = 0.5 - 0.25i; g = [1+i 2 3i];\n"
             "s.u = 1; s.v = -0.5; s.r = [4 5 6 7 8 9]; s.o.w = 3; s2 = s; qs(3).u = 7; qs(1).u = 2; qs(2).u = 5; qs(1).w = 1;\n"
             "qs(2).w = 2; qs(3).w = 0.5; q2 = qs; e = [1; 2; 3]; f = @(v) v * a + 1; h = @(v, w) down(mod(v, 4)) + w;\n")
    body = "".join(maker.loop(3, 0) for _ in range(source.choice([1, 1, 2])))
    shown = "".join(f"{name}\n" for name in ["a", "b", "c", "d", "k", "p", "q", "x", "y", "m", "l", "t", "z", "w", "g", "n", "s", "s2"])
    shown += "for k = 1:numel(qs)\nqs(k)\nend\nq2(2)\n"
    return start + body + shown + FUNCTIONS
