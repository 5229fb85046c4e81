x = mod((1:1000000) * 7919, 10007) / 10007;
for k = 1:6
  z = sort(x);
end
disp(num2str(sum(z(1:1000)), 12))
