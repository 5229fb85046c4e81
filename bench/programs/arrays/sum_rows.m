A = reshape(mod((1:1000000) * 7919, 10007) / 10007, 1000, 1000);
for k = 1:300
  z = sum(A, 2);
end
disp(num2str(sum(z), 12))
