A = reshape(mod((1:40000) .^ 2 * 7919, 10007) / 10007, 200, 200);
for k = 1:8
  [V, D] = eig(A);
end
disp(num2str(sum(abs(diag(D))), 12))
