x = mod((1:1000000) * 7919, 10007) / 10007;
for k = 1:800
  x(1:2:end) = 5;
end
disp(num2str(sum(x), 12))
