x = mod((1:1000000) * 7919, 10007) / 10007;
s = 0;
for k = 1:700
  s = s + norm(x);
end
disp(num2str(s, 12))
