A = reshape(mod((1:1000000) * 7919, 10007) / 10007, 1000, 1000);
for k = 1:60
  z = A';
end
disp(num2str(z(3, 500), 12))
