s = 0;
for k = 1:60000
  f = @(y) y + k;
  s = s + f(1);
end
disp(int2str(s))
