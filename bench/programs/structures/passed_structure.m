p.x = 0;
p.n = 0;
for k = 1:60000
  p = step(p, k);
end
disp(int2str(p.x + p.n))

function p = step(p, k)
p.x = p.x + k;
p.n = p.n + 1;
end
