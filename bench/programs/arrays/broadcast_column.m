A = reshape(mod((1:1000000) * 7919, 10007) / 10007, 1000, 1000);
c = mean(A, 2);
for k = 1:150
  z = A - c;
end
disp(num2str(sum(sum(z)), 12))
