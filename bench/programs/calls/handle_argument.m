s = 0;
for k = 1:600
  s = s + simpson(@(x) x ^ 3 - x, 0, k, 300);
end
disp(int2str(2 * s))

function y = simpson(f, a, b, n)
h = (b - a) / n;
y = f(a) + f(b);
for k = 1:n - 1
  if mod(k, 2) == 1
    y = y + 4 * f(a + k * h);
  else
    y = y + 2 * f(a + k * h);
  end
end
y = y * h / 3;
end
