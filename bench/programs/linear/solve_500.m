A = reshape(mod((1:250000) .^ 2 * 7919, 10007) / 10007, 500, 500);
v = reshape(mod((1:500) .^ 2 * 7919, 10007) / 10007, 500, 1);
A = A + 500 * eye(500);
for k = 1:40
  x = A \ v;
end
disp(num2str(1e3*sum(x), 12))
