x = mod((1:1000) * 7919, 10007) / 10007;
for k = 1:400
  z = repmat(x, 1000, 1);
end
disp(num2str(sum(sum(z)), 12))
