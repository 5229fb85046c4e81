A = reshape(mod((1:250000) .^ 2 * 7919, 10007) / 10007, 500, 500);
A = A + eye(500);
for k = 1:80
  d = det(A / 10);
end
disp(num2str(log10(abs(d)), 12))
