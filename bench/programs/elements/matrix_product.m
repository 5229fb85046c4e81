n = 50;
a = zeros(n, n);
b = zeros(n, n);
c = zeros(n, n);
for i = 1:n
  for j = 1:n
    a(i, j) = i + j;
    b(i, j) = i - j;
  end
end
for i = 1:n
  for j = 1:n
    t = 0;
    for k = 1:n
      t = t + a(i, k) * b(k, j);
    end
    c(i, j) = t;
  end
end
disp(int2str(c(7, 9) + c(n, 1) - c(1, n)))
