total = 0;
for a = 1:30000
  x = a;
  for k = 1:12
    x = 0.5 * (x + a / x);
  end
  total = total + x;
end
disp(int2str(total))
