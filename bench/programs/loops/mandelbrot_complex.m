inside = 0;
for p = 0:79
  for q = 0:59
    c = complex(p / 40 - 1.5, q / 30 - 1);
    z = 0;
    n = 0;
    while n < 60 & abs(z) <= 2
      z = z * z + c;
      n = n + 1;
    end
    inside = inside + n;
  end
end
disp(int2str(inside))
