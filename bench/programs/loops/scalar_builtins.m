s = 0;
for k = 1:150000
  s = s + abs(k - 500) + floor(k / 7) + sqrt(k) + max(k, 1000) - min(k, 10) + round(k / 3);
end
disp(int2str(s))
