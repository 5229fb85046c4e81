for k = 1:300
  p(k).x = k;
  p(k).v = 1;
end
for turn = 1:300
  for k = 1:300
    p(k).x = p(k).x + p(k).v;
  end
end
s = 0;
for k = 1:300
  s = s + p(k).x;
end
disp(int2str(s))
