x = mod((1:1000000) * 7919, 10007) / 10007;
w = 6 * x - 3;
for k = 1:12
  z = erf(w);
end
disp(num2str(sum(z), 12))
