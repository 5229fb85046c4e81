p = [0 0 0];
v = [1 2 3];
for k = 1:40000
  p = p + v * 0.5;
  v = v - p / 1000;
end
disp(int2str(1000 * (p(1) + p(2) + p(3))))
