for k = 1:30000
  s.(['f' int2str(k)]) = k;
end
t = 0;
for k = 1:30000
  t = t + s.(['f' int2str(k)]);
end
disp(int2str(t))
