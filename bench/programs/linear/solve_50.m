A = reshape(mod((1:2500) .^ 2 * 7919, 10007) / 10007, 50, 50);
v = A(:, 1);
A = A + 50 * eye(50);
for k = 1:8000
  x = A \ v;
end
disp(num2str(1e3*sum(x), 12))
