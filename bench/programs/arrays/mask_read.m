x = mod((1:1000000) * 7919, 10007) / 10007;
p = x > 0.4;
for k = 1:50
  z = x(p);
end
disp(num2str(sum(z), 12))
