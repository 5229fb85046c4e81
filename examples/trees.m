% Recursion with structures: a search tree of words, and arithmetic with expression trees.

words = [5 2 8 1 9 3 7];
tree = empty_tree();
for w = words
  tree = insert(tree, w);
end
disp(['in order: ' num2str(in_order(tree))])
disp(['depth: ' num2str(depth(tree))])
disp(['holds 7: ' num2str(contains(tree, 7)) ', holds 4: ' num2str(contains(tree, 4))])

% (x + 3) * (x - 1), its value and its derivative
x = variable();
e = times_of(plus_of(x, constant(3)), plus_of(x, constant(-1)));
disp(write(e))
disp(['at 2: ' num2str(evaluate(e, 2))])
d = derivative(e);
disp(['slope at 2: ' num2str(evaluate(d, 2))])
disp(['nodes of the derivative: ' num2str(count_nodes(d))])

function t = empty_tree()
t.isEmpty = 1;
end

function t = insert(t, value)
if t.isEmpty
  t.isEmpty = 0;
  t.value = value;
  t.left = empty_tree();
  t.right = empty_tree();
elseif value < t.value
  t.left = insert(t.left, value);
else
  t.right = insert(t.right, value);
end
end

function v = in_order(t)
if t.isEmpty
  v = [];
else
  v = [in_order(t.left), t.value, in_order(t.right)];
end
end

function n = depth(t)
if t.isEmpty
  n = 0;
else
  n = 1 + max(depth(t.left), depth(t.right));
end
end

function yes = contains(t, value)
if t.isEmpty
  yes = 0;
elseif value == t.value
  yes = 1;
elseif value < t.value
  yes = contains(t.left, value);
else
  yes = contains(t.right, value);
end
end

function e = constant(c)
e.kind = 'constant';
e.value = c;
end

function e = variable()
e.kind = 'variable';
end

function e = plus_of(a, b)
e.kind = 'plus';
e.a = a;
e.b = b;
end

function e = times_of(a, b)
e.kind = 'times';
e.a = a;
e.b = b;
end

function v = evaluate(e, x)
switch e.kind
case 'constant'
  v = e.value;
case 'variable'
  v = x;
case 'plus'
  v = evaluate(e.a, x) + evaluate(e.b, x);
case 'times'
  v = evaluate(e.a, x) * evaluate(e.b, x);
end
end

function d = derivative(e)
switch e.kind
case 'constant'
  d = constant(0);
case 'variable'
  d = constant(1);
case 'plus'
  d = plus_of(derivative(e.a), derivative(e.b));
case 'times'
  d = plus_of(times_of(derivative(e.a), e.b), times_of(e.a, derivative(e.b)));
end
end

function n = count_nodes(e)
n = 1;
if strcmp(e.kind, 'plus') | strcmp(e.kind, 'times')
  n = 1 + count_nodes(e.a) + count_nodes(e.b);
end
end

function s = write(e)
switch e.kind
case 'constant'
  s = num2str(e.value);
case 'variable'
  s = 'x';
case 'plus'
  s = ['(' write(e.a) ' + ' write(e.b) ')'];
case 'times'
  s = [write(e.a) ' * ' write(e.b)];
end
end
