x = mod((1:1000) * 7919, 10007) / 10007;
for k = 1:60000
  z = x .* x + x / 3 - 0.5;
end
disp(num2str(sum(z), 12))
