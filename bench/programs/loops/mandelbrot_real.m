inside = 0;
for p = 0:99
  for q = 0:79
    cr = p / 50 - 1.5;
    ci = q / 40 - 1;
    x = 0;
    y = 0;
    n = 0;
    while n < 50 && x * x + y * y <= 4
      t = x * x - y * y + cr;
      y = 2 * x * y + ci;
      x = t;
      n = n + 1;
    end
    inside = inside + n;
  end
end
disp(int2str(inside))
