A = reshape(mod((1:250000) .^ 2 * 7919, 10007) / 10007, 500, 500);
for k = 1:60
  [L, U, P] = lu(A);
end
disp(num2str(sum(sum(abs(U))), 12))
