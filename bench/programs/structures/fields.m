p.x = 0;
p.y = 0;
for k = 1:800000
  p.x = p.x + 1;
  p.y = p.y + p.x / 2;
end
disp(int2str(p.x + p.y))
