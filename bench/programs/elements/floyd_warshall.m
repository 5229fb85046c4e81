n = 90;
d = zeros(n, n) + 1000;
for k = 1:n
  d(k, mod(k, n) + 1) = k;
  d(k, mod(k * 7, n) + 1) = 2 * k;
end
for k = 1:n
  for i = 1:n
    for j = 1:n
      t = d(i, k) + d(k, j);
      if t < d(i, j)
        d(i, j) = t;
      end
    end
  end
end
disp(int2str(sum(sum(d))))
