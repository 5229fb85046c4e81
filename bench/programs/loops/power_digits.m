s = 0;
for k = 1:40000
  n = k;
  while n > 0
    d = rem(n, 10);
    s = s + d ^ 2;
    n = fix(n / 10);
  end
end
disp(int2str(s))
