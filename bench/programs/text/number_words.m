n = 0;
for k = 1:100000
  t = int2str(k);
  n = n + length(t);
  u = ['id', t];
  n = n + length(u);
end
disp(int2str(n))
