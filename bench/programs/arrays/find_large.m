x = mod((1:1000000) * 7919, 10007) / 10007;
for k = 1:150
  i = find(x > 0.5);
end
disp(num2str(sum(i), 12))
