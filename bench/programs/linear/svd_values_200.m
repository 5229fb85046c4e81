A = reshape(mod((1:40000) .^ 2 * 7919, 10007) / 10007, 200, 200);
for k = 1:60
  s = svd(A);
end
disp(num2str(sum(s), 12))
