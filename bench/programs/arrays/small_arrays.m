
v = zeros(1, 10);
w = 1:10;
for k = 1:150000
  v = v + w * 0.5;
  w = w - v / 1000;
end
disp(num2str(1000 * sum(v), 12))
