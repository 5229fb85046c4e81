A = reshape(mod((1:250000) .^ 2 * 7919, 10007) / 10007, 500, 500);
A = A + 500 * eye(500);
for k = 1:20
  B = inv(A);
end
disp(num2str(1e3*sum(sum(B)), 12))
