n = 1000;
x = zeros(1, n);
v = 7;
for k = 1:n
  v = mod(v * 137 + 11, 1009);
  x(k) = v;
end
for i = 1:n - 1
  for j = 1:n - i
    if x(j) > x(j + 1)
      t = x(j);
      x(j) = x(j + 1);
      x(j + 1) = t;
    end
  end
end
s = 0;
for k = 1:n
  s = s + k * x(k);
end
disp(int2str(s))
