c = 3;
f = @(x) x * x + c;
s = 0;
for k = 1:200000
  s = s + f(k);
end
disp(int2str(s))
