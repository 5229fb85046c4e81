x = [];
for k = 1:60000
  x(end + 1) = k;
end
y = [];
for k = 1:4000
  y = [y, k];
end
disp(int2str(sum(x) + sum(y)))
