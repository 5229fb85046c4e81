A = reshape(mod((1:250000) .^ 2 * 7919, 10007) / 10007, 500, 500);
B = reshape(mod((1:250000) .^ 2 * 104729, 10009) / 10009, 500, 500);
for k = 1:80
  C = A' * B;
end
disp(num2str(sum(sum(C)), 12))
