n = 32;
g = zeros(n, n);
for k = 1:n * n
  if mod(k * k + 3 * k, 7) < 3
    g(k) = 1;
  end
end
for step = 1:150
  h = zeros(n, n);
  for i = 2:n - 1
    for j = 2:n - 1
      s = g(i - 1, j - 1) + g(i - 1, j) + g(i - 1, j + 1) + g(i, j - 1) + g(i, j + 1) + g(i + 1, j - 1) + g(i + 1, j) + g(i + 1, j + 1);
      if s == 3 || (s == 2 && g(i, j) == 1)
        h(i, j) = 1;
      end
    end
  end
  g = h;
end
disp(int2str(sum(sum(g))))
