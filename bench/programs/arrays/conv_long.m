x = mod((1:1000000) * 7919, 10007) / 10007;
h = (1:100) / 100;
for k = 1:12
  z = conv(x, h);
end
disp(num2str(sum(z), 12))
