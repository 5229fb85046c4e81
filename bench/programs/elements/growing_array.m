x = [];
for k = 1:600000
  x(end + 1) = k;
end
y = [];
for k = 1:12000
  y = [y, k];
end
disp(int2str(sum(x) + sum(y)))
