s = 0;
for k = 1:1000000
  s = s + k / 3;
end
disp(int2str(s))
