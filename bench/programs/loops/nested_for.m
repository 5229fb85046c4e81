s = 0;
for i = 1:800
  for j = 1:800
    s = s + i * j - j;
  end
end
disp(int2str(s))
