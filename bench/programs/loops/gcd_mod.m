s = 0;
for a = 1:300
  for b = 1:100
    x = a;
    y = b;
    while y ~= 0
      t = mod(x, y);
      x = y;
      y = t;
    end
    s = s + x;
  end
end
disp(int2str(s))
