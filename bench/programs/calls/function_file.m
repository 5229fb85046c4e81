s = 0;
for k = 1:200000
  s = s + bench_twice(k, 1);
end
disp(int2str(s))
