x = mod((1:1000000) * 7919, 10007) / 10007;
for k = 1:80
  z = exp(x);
end
disp(num2str(sum(z), 12))
