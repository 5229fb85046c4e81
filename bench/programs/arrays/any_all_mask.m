x = mod((1:1000000) * 7919, 10007) / 10007;
p = x > 2;
q = x < 2;
s = 0;
for k = 1:6000
  s = s + any(p) + all(q);
end
disp(num2str(s, 12))
