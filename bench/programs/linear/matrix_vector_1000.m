A = reshape(mod((1:1000000) * 7919, 10007) / 10007, 1000, 1000);
v = reshape(mod((1:1000) .^ 2 * 7919, 10007) / 10007, 1000, 1);
for k = 1:800
  w = A * v;
end
disp(num2str(sum(w), 12))
