x = mod((1:1000000) * 7919, 10007) / 10007;
for k = 1:2000
  A = reshape(x, 1000, 1000);
end
disp(num2str(sum(sum(A)), 12))
