A = reshape(mod((1:2500) .^ 2 * 7919, 10007) / 10007, 50, 50);
B = reshape(mod((1:2500) .^ 2 * 104729, 10009) / 10009, 50, 50);
for k = 1:40000
  C = A * B;
end
disp(num2str(sum(sum(C)), 12))
