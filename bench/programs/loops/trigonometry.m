s = 0;
for k = 1:150000
  t = k / 1000;
  s = s + sin(t) * cos(t) + exp(-t) + log(t) + atan(t);
end
disp(int2str(1000 * s))
