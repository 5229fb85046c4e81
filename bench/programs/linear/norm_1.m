A = reshape(mod((1:1000000) * 7919, 10007) / 10007, 1000, 1000);
for k = 1:400
  s = norm(A, 1);
end
disp(num2str(s, 12))
