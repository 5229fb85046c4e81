x = mod((1:1000000) * 7919, 10007) / 10007;
for k = 1:400
  z = x(1:2:end);
end
disp(num2str(sum(z), 12))
