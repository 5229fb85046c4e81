v = reshape(mod((1:1000) .^ 2 * 7919, 10007) / 10007, 1000, 1);
for k = 1:200
  w = v * v';
end
disp(num2str(sum(sum(w)), 12))
