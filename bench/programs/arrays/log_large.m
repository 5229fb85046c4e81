x = mod((1:1000000) * 7919, 10007) / 10007;
w = x + 0.5;
for k = 1:80
  z = log(w);
end
disp(num2str(sum(z), 12))
