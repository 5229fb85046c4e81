x = mod((1:1000000) * 7919, 10007) / 10007;
y = mod((1:1000000) * 104729, 10009) / 10009;
u = complex(x, y);
v = complex(y, x);
for k = 1:60
  z = u .* v + u;
end
disp(num2str(real(sum(z)), 12))
