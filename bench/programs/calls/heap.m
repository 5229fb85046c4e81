for turns = 1:4
  h = zeros(1, 20000);
  n = 0;
  seed = 7;
  for k = 1:8000
    seed = mod(seed * 1103 + 12345, 65536);
    [h, n] = push(h, n, seed);
  end
  s = 0;
  for k = 1:8000
    [h, n, v] = pop(h, n);
    s = s + v * mod(k, 3);
  end
end
disp(int2str(s))
function [h, n] = push(h, n, v)
n = n + 1;
h(n) = v;
i = n;
while i > 1
  p = floor(i / 2);
  if h(p) <= h(i)
    break
  end
  t = h(p);
  h(p) = h(i);
  h(i) = t;
  i = p;
end
end
function [h, n, v] = pop(h, n)
v = h(1);
h(1) = h(n);
n = n - 1;
i = 1;
while 2 * i <= n
  c = 2 * i;
  if c < n && h(c + 1) < h(c)
    c = c + 1;
  end
  if h(i) <= h(c)
    break
  end
  t = h(c);
  h(c) = h(i);
  h(i) = t;
  i = c;
end
end
